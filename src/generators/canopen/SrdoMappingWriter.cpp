#include "generators/canopen/SrdoMappingWriter.h"

#include "check/MappingEntry.h"
#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/TemplateText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Kind = SrdoValueForm::Kind;

constexpr int bitsPerByte = 8;
constexpr auto lintNote = "; /*lint !e929 !e740 */\n"_L1;

/** Local variables of the template that hold the bits of a REAL32. */
constexpr auto receivedBits = "tmpU32"_L1;
constexpr auto transmittedBits = "tmp"_L1;

QString cType(const SrdoVariable &variable)
{
    return CValues::form(variable.form->table).type.toString();
}

/** The bitwise complement of a C expression, in a C type. */
QString complement(QStringView type, const QString &expression)
{
    return u"("_s + type + u")~"_s + expression;
}

QString element(const QString &name, int byte)
{
    return u"%1.val[%2]"_s.arg(name).arg(byte);
}

/** Bytes of a message, the least significant one first, into a number. */
void readNumber(CodeWriter &out, const QString &target, const SrdoValueForm &form, int offset)
{
    out << u"\t\t" << target << u" = (" << form.word << u")pData[" << offset << u"]; /*lint !e960 */\n";
    for (int byte = 1; byte < form.size; ++byte)
        out << u"\t\t" << target << u" |= (" << form.word << u")pData[" << offset + byte << u"] << "
            << byte * bitsPerByte << u"u; /*lint !e960 */\n";
}

void readBytes(CodeWriter &out, const QString &target, const SrdoValueForm &form, int offset)
{
    for (int byte = 0; byte < form.size; ++byte)
        readNumber(out, element(target, byte), {.size = 1, .word = form.word}, offset + byte);
}

/** The bits of a REAL32 into a variable. */
void writeReal(CodeWriter &out, const QString &target, const QString &bits)
{
    out << u"\t\t/* cast from pointer to pointer,\n\t\t * as the bits are those of the value */\n";
    out << u"\t\t" << target << u" = *(REAL32 *)&" << bits << lintNote;
}

/** What the inverted message carried, for an object of the device that shows it. */
void writeInvertedCopy(CodeWriter &out, const SrdoVariable &copy, const SrdoVariable &normal,
                       const QString &realBits)
{
    switch (copy.form->kind) {
    case Kind::Unsigned:
    case Kind::Signed:
        out << u"\t\t" << copy.name << u" = " << complement(cType(copy), normal.name) << u";\n";
        break;
    case Kind::Real:
        out << u"\t\t" << realBits << u" = ~" << realBits << u";\n";
        writeReal(out, copy.name, realBits);
        break;
    case Kind::Bytes:
        for (int byte = 0; byte < copy.form->size; ++byte)
            out << u"\t\t" << element(copy.name, byte) << u" = "
                << complement(copy.form->word, element(normal.name, byte)) << u";\n";
        break;
    }
}

/** One byte of a value into both messages. */
void writeByte(CodeWriter &out, int position, const QString &normal, const QString &inverted, int shift)
{
    static const TemplateText lowest(
        uR"(		pBufferNormal[$position$]   = (UNSIGNED8)($normal$ & 0xffu);
		pBufferInverted[$position$] = (UNSIGNED8)($inverted$ & 0xffu);
)"_s);
    static const TemplateText higher(
        uR"(		pBufferNormal[$position$]   = (UNSIGNED8)($normal$ >> $shift$u) & 0xffu;
		pBufferInverted[$position$] = (UNSIGNED8)($inverted$ >> $shift$u) & 0xffu;
)"_s);
    if (shift == 0)
        out.fill(lowest, {{u"position", position}, {u"normal", normal}, {u"inverted", inverted}});
    else
        out.fill(higher,
                 {{u"position", position}, {u"normal", normal}, {u"inverted", inverted}, {u"shift", shift}});
}

void writeBytes(CodeWriter &out, const SrdoVariable &variable, int offset)
{
    for (int byte = 0; byte < variable.form->size; ++byte) {
        const QString name = element(variable.name, byte);
        writeByte(out, offset + byte, name, complement(variable.form->word, name), 0);
    }
}

void writeNumber(CodeWriter &out, const SrdoVariable &variable, int offset)
{
    QString name = variable.name;
    if (variable.form->kind == Kind::Real) {
        name = transmittedBits;
        out << u"\t\ttmp = *(UNSIGNED32 *)&" << variable.name << lintNote;
    } else if (variable.form->kind == Kind::Signed) {
        name = u"("_s + variable.form->word + u')' + variable.name;
    }
    const QString inverted = variable.form->kind == Kind::Real
        ? u"~"_s + transmittedBits
        : complement(variable.form->word, variable.name);
    for (int byte = 0; byte < variable.form->size; ++byte)
        writeByte(out, offset + byte, name, inverted, byte * bitsPerByte);
}

} // namespace

void SrdoMappingWriter::writeReceiveNormal(CodeWriter &out) const
{
    writeSwitch(out, &SrdoMappingWriter::readNormal);
}

void SrdoMappingWriter::writeReceiveInverted(CodeWriter &out) const
{
    writeSwitch(out, &SrdoMappingWriter::checkInverted);
}

void SrdoMappingWriter::writeTransmit(CodeWriter &out) const
{
    writeSwitch(out, &SrdoMappingWriter::transmit);
}

void SrdoMappingWriter::writeSwitch(CodeWriter &out, ValueWriter write) const
{
    if (!m_view.isMultiLineForm) {
        writeSrdoSwitch(out, m_view.lines.isEmpty() ? QList<Srdo>() : m_view.lines.first().srdos, write);
        return;
    }
    out << u"\tswitch (canLine) {\n";
    for (const SrdoLine &line : m_view.lines) {
        out << u"\tcase " << line.number << u"u:\n";
        writeSrdoSwitch(out, line.srdos, write);
        out << u"\tbreak;\n";
    }
    writeDefault(out);
}

void SrdoMappingWriter::writeSrdoSwitch(CodeWriter &out, const QList<Srdo> &srdos, ValueWriter write) const
{
    out << u"\tswitch (srdoNr) {\n";
    for (const Srdo &srdo : srdos) {
        out << u"\tcase " << srdo.number << u"u:\n";
        (this->*write)(out, srdo);
        out << u"\t\tbreak;\n";
    }
    writeDefault(out);
}

void SrdoMappingWriter::writeDefault(CodeWriter &out) const
{
    out << u"\tdefault:\n" << m_dialect.text(u"\t\treturn(RET_PARAMETER_INVALID);\n"_s) << u"\t}\n";
}

void SrdoMappingWriter::writeNotSupported(CodeWriter &out, const SrdoValue &value) const
{
    const MappingEntry entry{value.entry};
    out << u"\t\t/* 0x%1:%2 of %3 bits is not supported */\n"_s.arg(entry.index(), 4, 16, '0'_L1)
               .arg(entry.subIndex())
               .arg(entry.bits());
    out << (m_dialect.isV4() ? u"\t\tretVal = RET_MAP_ERROR;\n" : u"\t\tretVal = RET_CO_MAP_ERROR;\n");
}

void SrdoMappingWriter::readNormal(CodeWriter &out, const Srdo &srdo) const
{
    for (const SrdoValue &value : srdo.values) {
        if (value.variable < 0) {
            writeNotSupported(out, value);
            continue;
        }
        const SrdoVariable &target = variable(value.variable);
        const SrdoValueForm &form = *target.form;
        if (form.kind == Kind::Bytes) {
            readBytes(out, target.temporary, form, value.offset);
        } else if (form.kind == Kind::Signed) {
            readNumber(out, form.scratch.toString(), form, value.offset);
            out << u"\t\t" << target.temporary << u" = (" << cType(target) << u")" << form.scratch << u";\n";
        } else {
            readNumber(out, target.temporary, form, value.offset);
        }
    }
}

void SrdoMappingWriter::checkInverted(CodeWriter &out, const Srdo &srdo) const
{
    for (const SrdoValue &value : srdo.values) {
        if (value.variable < 0)
            writeNotSupported(out, value);
        else
            compare(out, value);
    }
    takeValues(out, srdo);
}

/** The complement is no part of the comparison, where compilers warn of its promotion to int. */
void SrdoMappingWriter::compare(CodeWriter &out, const SrdoValue &value) const
{
    const SrdoVariable &target = variable(value.variable);
    const SrdoValueForm &form = *target.form;
    const QString scratch = form.scratch.toString();
    const auto invert = [&](const QString &number) {
        out << u"\t\t" << number << u" = " << complement(form.word, number) << u";\n";
    };
    if (form.kind == Kind::Bytes) {
        readBytes(out, scratch, form, value.offset);
        for (int byte = 0; byte < form.size; ++byte) {
            invert(element(scratch, byte));
            writeComparison(out, element(target.temporary, byte), element(scratch, byte));
        }
        return;
    }
    readNumber(out, scratch, form, value.offset);
    invert(scratch);
    const bool isSigned = form.kind == Kind::Signed;
    writeComparison(out, target.temporary,
                    isSigned ? QString(u'(' + cType(target) + u')' + scratch) : scratch);
}

void SrdoMappingWriter::writeComparison(CodeWriter &out, const QString &temporary,
                                        const QString &inverted) const
{
    out << u"\t\tif (" << temporary << u" != " << inverted << u") {\n";
    out << (m_dialect.isV4() ? u"\t\t\tretVal = RET_MAP_ERROR;\n" : u"\t\t\tretVal = RET_CO_MAP_ERROR;\n");
    out << u"\t\t}\n";
}

/** All values of a message or none: they belong together. */
void SrdoMappingWriter::takeValues(CodeWriter &out, const Srdo &srdo) const
{
    const auto isMoved = [](const SrdoValue &value) { return value.variable >= 0; };
    if (std::ranges::none_of(srdo.values, isMoved))
        return;
    out << u"\t\tif (retVal != RET_OK) {\n\t\t\tbreak;\n\t\t}\n";
    for (const SrdoValue &value : srdo.values) {
        if (!isMoved(value))
            continue;
        const SrdoVariable &target = variable(value.variable);
        if (target.form->kind == Kind::Real)
            writeReal(out, target.name, target.temporary);
        else
            out << u"\t\t" << target.name << u" = " << target.temporary << u";\n";
        if (value.inverted < 0)
            continue;
        if (target.form->kind == Kind::Real)
            out << u"\t\t" << receivedBits << u" = " << target.temporary << u";\n";
        writeInvertedCopy(out, variable(value.inverted), target, receivedBits);
    }
}

void SrdoMappingWriter::transmit(CodeWriter &out, const Srdo &srdo) const
{
    for (const SrdoValue &value : srdo.values) {
        if (value.variable < 0) {
            writeNotSupported(out, value);
            continue;
        }
        const SrdoVariable &source = variable(value.variable);
        if (source.form->kind == Kind::Bytes)
            writeBytes(out, source, value.offset);
        else
            writeNumber(out, source, value.offset);
        if (value.inverted >= 0)
            writeInvertedCopy(out, variable(value.inverted), source, transmittedBits);
    }
}
