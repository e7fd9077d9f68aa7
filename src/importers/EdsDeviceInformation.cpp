#include "importers/EdsDeviceInformation.h"

#include "canopen/CANTypes.h"
#include "canopen/EdsDocument.h"
#include "canopen/EdsNumber.h"
#include "canopen/EdsObjectName.h"
#include "canopen/EdsValue.h"
#include "importers/PdoTemplates.h"
#include "store/ObjectDataBase.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

using Section = EdsDocument::Section;

enum class Kind { Text, Flag, Number };

struct Row
{
    const char *section;
    const char *key; ///< of the file and of the setting
    Kind kind;
};

// "Dummy004" is spelled so in the project format; Dummy0004 belongs to the user.
constexpr Row rows[] = {
    {"FileInfo", "FileVersion", Kind::Text},     {"FileInfo", "FileRevision", Kind::Text},
    {"FileInfo", "CreatedBy", Kind::Text},       {"FileInfo", "ModifiedBy", Kind::Text},
    {"DummyUsage", "Dummy0001", Kind::Flag},     {"DummyUsage", "Dummy0002", Kind::Flag},
    {"DummyUsage", "Dummy0003", Kind::Flag},     {"DummyUsage", "Dummy004", Kind::Flag},
    {"DummyUsage", "Dummy0005", Kind::Flag},     {"DummyUsage", "Dummy0006", Kind::Flag},
    {"DummyUsage", "Dummy0007", Kind::Flag},     {"DeviceInfo", "VendorName", Kind::Text},
    {"DeviceInfo", "ProductName", Kind::Text},   {"DeviceInfo", "OrderCode", Kind::Text},
    {"DeviceInfo", "LSS_Supported", Kind::Flag}, {"DeviceInfo", "BaudRate_10", Kind::Flag},
    {"DeviceInfo", "BaudRate_20", Kind::Flag},   {"DeviceInfo", "BaudRate_50", Kind::Flag},
    {"DeviceInfo", "BaudRate_125", Kind::Flag},  {"DeviceInfo", "BaudRate_250", Kind::Flag},
    {"DeviceInfo", "BaudRate_500", Kind::Flag},  {"DeviceInfo", "BaudRate_800", Kind::Flag},
    {"DeviceInfo", "BaudRate_1000", Kind::Flag}, {"DeviceInfo", "NrOfRXPDO", Kind::Number},
    {"DeviceInfo", "NrOfTXPDO", Kind::Number},
};

struct KeptRow
{
    const char *section;
    const char *key; ///< of the file and of the setting
};

/** Settings of the project that a file does not change. */
constexpr KeptRow keptRows[] = {{"DeviceInfo", "Granularity"}, {"DummyUsage", "Dummy0004"}};

/** Sections whose content the project holds elsewhere. */
constexpr const char *ownSections[] = {
    "FileInfo",         "DeviceInfo",      "DummyUsage",          "Comments",
    "MandatoryObjects", "OptionalObjects", "ManufacturerObjects",
};

/** The settings of one network (CiA 306 spells it with one "m"); no part of a device description. */
constexpr const char *commissioningSections[] = {"DeviceComissioning", "DeviceCommissioning"};

/** More than that is no addition to a device description any more. */
constexpr qsizetype longestAddition = 256 * 1024;

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** The setting's text; empty where the value is no number. */
QString numericText(const QString &value, Kind kind)
{
    const auto number = edsNumber(withoutEdsRemark(value));
    if (!number)
        return {};
    return kind == Kind::Flag ? QString::number(int(*number != 0)) : QString::number(*number);
}

void storeRow(const Row &row, const EdsDocument::Entry &entry, ObjectDataBase &database,
              EdsFindings &findings)
{
    const QString key = latin1(row.key);
    if (row.kind == Kind::Text) {
        database.setDescriptionSetting(key, normalizedEdsValue(entry.value, CAN::VisibleString).text);
        return;
    }
    const QString text = numericText(entry.value, row.kind);
    if (!text.isEmpty())
        database.setDescriptionSetting(key, text);
    else if (!entry.value.isEmpty())
        findings.warn(entry.line,
                      u"%1 is \"%2\", which is no number; it is left out."_s.arg(key, entry.value));
}

/** The texts of Line1 to Line<Lines>; what is missing in between is left out. */
QStringList commentLines(const Section &section, EdsFindings &findings)
{
    static const QRegularExpression form(u"^line0*([1-9][0-9]{0,8})$"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    QMap<int, const EdsDocument::Entry *> lines;
    for (const EdsDocument::Entry &entry : section.entries) {
        const QRegularExpressionMatch match = form.match(entry.key);
        if (match.hasMatch())
            lines.insert(match.captured(1).toInt(), &entry);
    }
    const auto declared = edsNumber(withoutEdsRemark(section.value(u"Lines"_s)));
    QStringList texts;
    for (auto line = lines.constBegin(); line != lines.constEnd(); ++line) {
        if (!declared || quint64(line.key()) <= *declared)
            texts.append((*line)->value);
        else
            findings.warn((*line)->line,
                          u"[Comments] counts %1 lines; %2 is left out."_s.arg(*declared).arg((*line)->key));
    }
    if (!declared || *declared > quint64(lines.size()))
        findings.note(section.lineOf(u"Lines"_s),
                      u"[Comments] has %1 lines, which is not the number that it gives."_s.arg(lines.size()));
    return texts;
}

void storeComment(const EdsDocument &document, ObjectDataBase &database, EdsFindings &findings)
{
    const Section *section = document.section(u"Comments"_s);
    if (!section)
        return;
    const QStringList lines = commentLines(*section, findings);
    // What this system writes for a project without comment is none.
    const bool placeholder =
        document.isGenerated() && lines.size() == 1 && lines.constFirst().startsWith("generated by "_L1);
    if (!placeholder)
        database.setDescriptionSetting(u"Comment"_s, lines.join(u'\n'));
}

template <size_t Count>
bool isOneOf(const QString &name, const char *const (&names)[Count])
{
    return std::any_of(std::begin(names), std::end(names), [&name](const char *known) {
        return name.compare(QLatin1StringView(known), Qt::CaseInsensitive) == 0;
    });
}

bool isOwn(const QString &name)
{
    return edsObjectName(name) || edsListOwner(name) || isOneOf(name, ownSections);
}

/** The text of a section as it may stand in a device description again. */
QString sectionText(const Section &section)
{
    QStringList lines{u"[%1]"_s.arg(section.name)};
    for (const EdsDocument::Entry &entry : section.entries)
        lines.append(entry.key + u'=' + entry.value);
    return lines.join(u'\n');
}

void storeAdditions(const EdsDocument &document, ObjectDataBase &database, EdsFindings &findings)
{
    QStringList texts;
    qsizetype size = 0;
    for (const Section &section : document.sections()) {
        if (isOneOf(section.name, commissioningSections)) {
            findings.note(section.line, u"[%1] belongs to a DCF and is left out."_s.arg(section.name));
            continue;
        }
        if (isOwn(section.name))
            continue;
        const QString text = sectionText(section);
        size += text.size();
        if (size > longestAddition) {
            findings.warn(section.line,
                          u"There are too many sections beside the objects; they are left out."_s);
            return;
        }
        findings.note(section.line, u"[%1] is kept among the additional sections."_s.arg(section.name));
        texts.append(text);
    }
    if (!texts.isEmpty())
        database.setDescriptionSetting(u"AdditionalSections"_s, texts.join(u"\n\n"_s));
}

/** A setting that stays as it is must not do so unnoticed where the file tells another value. */
void tellKept(const KeptRow &row, const EdsDocument &document, ObjectDataBase &database,
              EdsFindings &findings)
{
    const Section *section = document.section(latin1(row.section));
    const EdsDocument::Entry *entry = section ? section->find(latin1(row.key)) : nullptr;
    if (!entry || entry->value.isEmpty())
        return;
    const QString kept = database.getDescriptionSetting(latin1(row.key));
    if (edsNumber(withoutEdsRemark(entry->value)) != edsNumber(kept))
        findings.note(entry->line,
                      u"%1 is \"%2\"; the setting of the project, \"%3\", is kept."_s.arg(
                          latin1(row.key), entry->value, kept));
}

} // namespace

namespace EdsDeviceInformation {

void store(const EdsDocument &document, ObjectDataBase &database, EdsFindings &findings)
{
    for (const Row &row : rows) {
        const Section *section = document.section(latin1(row.section));
        const EdsDocument::Entry *entry = section ? section->find(latin1(row.key)) : nullptr;
        if (entry)
            storeRow(row, *entry, database, findings);
    }
    for (const KeptRow &row : keptRows)
        tellKept(row, document, database, findings);
    storeComment(document, database, findings);
    storeAdditions(document, database, findings);
}

int pdoCount(const EdsDocument &document, ObjectDataBase &database, const char *key)
{
    const Section *section = document.section(u"DeviceInfo"_s);
    const QString declared = section ? section->value(latin1(key)) : QString();
    const QString text = declared.isEmpty() ? database.getDescriptionSetting(latin1(key)) : declared;
    const quint64 count = edsNumber(withoutEdsRemark(text)).value_or(0);
    return int(std::min(count, quint64(PdoTemplates::mostPdos)));
}

} // namespace EdsDeviceInformation
