#include "generators/canopen/SrdoMappingWriter.h"

#include "check/MappingEntry.h"
#include "generators/CodeWriter.h"
#include "generators/Dialect.h"
#include "generators/ObjectKey.h"

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

/** What the inverted message carried, for the object of the device that takes it. */
void takeInvertedCopy(CodeWriter &out, const SrdoVariable &copy, const SrdoVariable &normal)
{
    switch (copy.form->kind) {
    case Kind::Unsigned:
    case Kind::Signed:
        out << u"\t\t" << copy.name << u" = " << complement(cType(copy), normal.name) << u";\n";
        break;
    case Kind::Real:
        out << u"\t\t" << receivedBits << u" = ~" << normal.temporary << u";\n";
        writeReal(out, copy.name, receivedBits);
        break;
    case Kind::Bytes:
        for (int byte = 0; byte < copy.form->size; ++byte)
            out << u"\t\t" << element(copy.name, byte) << u" = "
                << complement(copy.form->word, element(normal.name, byte)) << u";\n";
        break;
    }
}

/** The bits of a REAL32 into the local variable that its bytes are taken from. */
void writeRealBits(CodeWriter &out, const SrdoVariable &variable)
{
    if (variable.form->kind == Kind::Real)
        out << u"\t\t" << transmittedBits << u" = *(UNSIGNED32 *)&" << variable.name << lintNote;
}

/** What one byte of a value is taken from: the number that it is a part of. */
QString numberOfByte(const SrdoVariable &variable, int byte, bool isInverted)
{
    const SrdoValueForm &form = *variable.form;
    const QString name = form.kind == Kind::Bytes ? element(variable.name, byte)
        : form.kind == Kind::Real                 ? QString(transmittedBits)
                                                  : variable.name;
    if (form.kind == Kind::Real)
        return isInverted ? QString(u'~' + name) : name;
    if (isInverted)
        return complement(form.word, name);
    return form.kind == Kind::Signed ? QString(u'(' + form.word + u')' + name) : name;
}

/** One byte of a value into a message; `target` tells which, up to the assignment. */
void writeByte(CodeWriter &out, const QString &target, const SrdoVariable &variable, int byte,
               bool isInverted)
{
    const QString number = numberOfByte(variable, byte, isInverted);
    const int shift = variable.form->kind == Kind::Bytes ? 0 : byte * bitsPerByte;
    if (shift == 0)
        out << target << u"(UNSIGNED8)(" << number << u" & 0xffu);\n";
    else
        out << target << u"(UNSIGNED8)(" << number << u" >> " << shift << u"u) & 0xffu;\n";
}

QString normalByte(int position)
{
    return u"\t\tpBufferNormal[%1]   = "_s.arg(position);
}

QString invertedByte(int position)
{
    return u"\t\tpBufferInverted[%1] = "_s.arg(position);
}

/** A value without an inverted object: its complement is made here. */
void writeBoth(CodeWriter &out, const SrdoVariable &variable, int offset)
{
    writeRealBits(out, variable);
    for (int byte = 0; byte < variable.form->size; ++byte) {
        writeByte(out, normalByte(offset + byte), variable, byte, false);
        writeByte(out, invertedByte(offset + byte), variable, byte, true);
    }
}

/**
 * A value and the object that the application keeps the inverted copy in. Each message carries its own
 * object, so that a receiver sees when the two have come apart, or never belonged together.
 */
void writeBoth(CodeWriter &out, const SrdoVariable &normal, const SrdoVariable &inverted, int offset)
{
    writeRealBits(out, normal);
    for (int byte = 0; byte < normal.form->size; ++byte)
        writeByte(out, normalByte(offset + byte), normal, byte, false);
    out << u"\t\t/* inverted copy: 0x%1:%2 */\n"_s.arg(ObjectKey::index(inverted.key), 4, 16, '0'_L1)
               .arg(ObjectKey::subIndex(inverted.key));
    writeRealBits(out, inverted);
    for (int byte = 0; byte < inverted.form->size; ++byte)
        writeByte(out, invertedByte(offset + byte), inverted, byte, false);
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
        if (value.inverted >= 0)
            takeInvertedCopy(out, variable(value.inverted), target);
    }
}

void SrdoMappingWriter::transmit(CodeWriter &out, const Srdo &srdo) const
{
    for (const SrdoValue &value : srdo.values) {
        if (value.variable < 0) {
            writeNotSupported(out, value);
            continue;
        }
        if (value.inverted < 0)
            writeBoth(out, variable(value.variable), value.offset);
        else
            writeBoth(out, variable(value.variable), variable(value.inverted), value.offset);
    }
}
