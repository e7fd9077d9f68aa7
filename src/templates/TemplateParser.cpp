#include "templates/TemplateParser.h"

#include "templates/TemplateCells.h"
#include "templates/TemplateColumns.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar comment = u'#';
constexpr quint32 lastCanLine = ObjectDataBase::MaximumLines - 1;

struct SettingsSection
{
    QLatin1StringView name;
    TemplateProject::Table table;
};

constexpr std::array settingsSections = std::to_array<SettingsSection>({
    {"GeneralSettings"_L1, TemplateProject::Table::General},
    {"DescriptionSettings"_L1, TemplateProject::Table::Description},
    {"EnergyBusSettings"_L1, TemplateProject::Table::EnergyBus},
    {"J1939Settings"_L1, TemplateProject::Table::J1939},
});

int firstLetter(const QString &row)
{
    const auto letter = std::find_if(row.begin(), row.end(), [](QChar c) { return !c.isSpace(); });
    return int(letter - row.begin());
}

} // namespace

QString TemplateMessage::toString() const
{
    return line > 0 ? u"%1:%2:%3: error: %4"_s.arg(file).arg(line).arg(column).arg(text)
                    : u"%1: error: %2"_s.arg(file, text);
}

const TemplateParser::Section TemplateParser::sections[] = {
    {"Template"_L1, false, &TemplateParser::readProperty},
    {"GeneralSettings"_L1, false, &TemplateParser::readSetting},
    {"DescriptionSettings"_L1, false, &TemplateParser::readSetting},
    {"EnergyBusSettings"_L1, false, &TemplateParser::readSetting},
    {"J1939Settings"_L1, false, &TemplateParser::readSetting},
    {"Objects"_L1, true, &TemplateParser::readObjectRow},
    {"PGNs"_L1, true, &TemplateParser::readGroupRow},
};

bool TemplateParser::parse(const QByteArray &source, const QString &fileName)
{
    const qsizetype before = m_messages.size();
    m_file = fileName;
    m_line = 0;
    m_section = nullptr;
    m_sectionExpected = true;
    const QList<QByteArray> lines = source.split('\n');
    for (const QByteArray &line : lines) {
        ++m_line;
        readLine(line);
    }
    return m_messages.size() == before;
}

bool TemplateParser::finish()
{
    const qsizetype before = m_messages.size();
    m_messages.append(m_subIndexMissing.values());
    if (m_project.edition.isEmpty())
        fail(1, u"no source gives the edition in a section [Template]"_s);
    return m_messages.size() == before;
}

void TemplateParser::fail(int column, const QString &text)
{
    m_messages.append({m_file, m_line, column, text});
}

void TemplateParser::readLine(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString row = decoder(bytes);
    if (decoder.hasError()) {
        fail(1, u"the line is not UTF-8 text"_s);
        return;
    }
    if (row.endsWith(u'\r'))
        row.chop(1);
    const int start = firstLetter(row);
    if (start == row.size() || row.at(start) == comment)
        return;
    if (row.at(start) == u'[')
        readHeader(row, start + 1);
    else if (m_section)
        (this->*m_section->read)(row);
    else if (std::exchange(m_sectionExpected, false))
        fail(start + 1, u"a section such as [GeneralSettings] is expected here"_s);
}

void TemplateParser::readHeader(const QString &row, int column)
{
    m_section = nullptr;
    m_ownerKnown = false;
    m_ownerSeen = false;
    // One message tells that a section cannot be read; its rows would only repeat it.
    m_sectionExpected = false;
    const QString header = row.trimmed();
    if (!header.endsWith(u']')) {
        fail(column, u"the section name does not end with ]"_s);
        return;
    }
    const QString inner = header.sliced(1, header.size() - 2).simplified();
    openSection(inner.section(u' ', 0, 0), inner.section(u' ', 1), column);
}

void TemplateParser::openSection(const QString &name, const QString &number, int column)
{
    const auto section = std::find_if(std::begin(sections), std::end(sections),
                                      [&](const Section &known) { return known.name == name; });
    if (section == std::end(sections)) {
        fail(column, u"unknown section \"%1\""_s.arg(name));
        return;
    }
    if (!section->perLine && !number.isEmpty()) {
        fail(column, u"the section %1 takes no line number"_s.arg(name));
        return;
    }
    if (section->perLine) {
        bool isNumber = false;
        const uint line = number.toUInt(&isNumber);
        if (!isNumber || line > lastCanLine) {
            fail(column, u"the section %1 needs a line number from 0 to %2"_s.arg(name).arg(lastCanLine));
            return;
        }
        m_canLine = quint8(line);
    }
    m_section = section;
}

std::optional<TemplateParser::Property> TemplateParser::splitProperty(const QString &row)
{
    const int keyColumn = firstLetter(row) + 1;
    const qsizetype equals = row.indexOf(u'=');
    const QString key = row.first(std::max<qsizetype>(equals, 0)).trimmed();
    if (key.isEmpty()) {
        fail(keyColumn, u"a row of the form key = value is expected"_s);
        return {};
    }
    const TemplateCells value = TemplateCells::single(row.sliced(equals + 1), int(equals) + 2);
    if (!value.error.isEmpty()) {
        fail(value.errorColumn, value.error);
        return {};
    }
    return Property{key, value.cells.constFirst().text, keyColumn};
}

void TemplateParser::readProperty(const QString &row)
{
    const auto property = splitProperty(row);
    if (!property)
        return;
    if (property->key != "edition"_L1)
        fail(property->column, u"unknown key \"%1\"; edition is known"_s.arg(property->key));
    else if (!m_project.edition.isEmpty())
        fail(property->column, u"the edition is given a second time"_s);
    else
        m_project.edition = property->value;
}

void TemplateParser::readSetting(const QString &row)
{
    const auto property = splitProperty(row);
    if (!property
        || !isNew(u"%1 %2"_s.arg(m_section->name, property->key), property->column,
                  u"the key \"%1\" is given a second time"_s.arg(property->key)))
        return;
    const auto *section =
        std::find_if(settingsSections.begin(), settingsSections.end(),
                     [&](const SettingsSection &known) { return known.name == m_section->name; });
    m_project.settings.append({section->table, property->key, property->value});
}

bool TemplateParser::isNew(const QString &identity, int column, const QString &message)
{
    if (m_seen.contains(identity)) {
        fail(column, message);
        return false;
    }
    m_seen.insert(identity);
    return true;
}
