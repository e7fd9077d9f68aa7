#include "generators/documents/CsvText.h"

#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "canopen/Helper.h"
#include "generators/documents/DocumentText.h"
#include "generators/documents/ObjectListView.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar separator = u',';
constexpr QChar quote = u'"';

/** What no row can hold; a zero byte makes the importer take a line for binary data. */
bool breaksRow(QChar c)
{
    return c == u'\n' || c == u'\r' || c.isNull();
}

} // namespace

QString CsvText::oneLine(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), breaksRow))
        return text;
    return QString(text).removeIf(breaksRow);
}

QString CsvText::plain(const QString &text)
{
    QString field = oneLine(text);
    if (field.startsWith(quote))
        field[0] = u'\'';
    if (field.contains(separator))
        field.replace(separator, u';');
    return field;
}

QString CsvText::quoted(const QString &text)
{
    QString field = oneLine(text);
    if (!field.contains(separator) && !field.startsWith(quote))
        return field;
    return quote + QString(field).replace(quote, "\"\""_L1) + quote;
}

QString CsvText::description(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), breaksRow))
        return quoted(text);
    const QLatin1StringView mark(Helper::csvDescLinebreak);
    return quoted(QString(text).replace("\r\n"_L1, mark).replace(u'\n', mark).replace(u'\r', mark));
}

QString CsvText::index(quint16 index)
{
    return "0x"_L1 + DocumentText::index(index);
}

QString CsvText::dataType(int dataType)
{
    return COHelper::index2DataTypeString(quint16(dataType));
}

QString CsvText::flag(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}

QString CsvText::implementation(int implementation)
{
    switch (implementation) {
    case CANopen::ManagedVariable:
        return u"ManagedVariable"_s;
    case CANopen::ManagedConst:
        return u"ManagedConst"_s;
    case CANopen::ApplicationVariable:
        return u"Variable"_s;
    default:
        return u"VirtualObject"_s;
    }
}

QString CsvText::objectCode(const ListedObject &object)
{
    if (object.data.objecttype == CANopen::Array)
        return u"ARRAY"_s;
    return object.data.objecttype == CANopen::Record ? u"RECORD"_s : u"VARIABLE"_s;
}
