#include "generators/documents/DocumentText.h"

#include "canopen/COHelper.h"
#include "canopen/Helper.h"
#include "generators/documents/ObjectListView.h"

using namespace Qt::StringLiterals;

namespace {

// Every row has some: QString::arg would cost more than all the rest of a row.
QString hexadecimal(uint number, int digits)
{
    constexpr char16_t symbols[] = u"0123456789abcdef";
    QString text(digits, Qt::Uninitialized);
    for (int place = digits - 1; place >= 0; --place) {
        text[place] = symbols[number & 0xF];
        number >>= 4;
    }
    return text;
}

} // namespace

QString DocumentText::index(quint16 index)
{
    return hexadecimal(index, 4);
}

QString DocumentText::subIndex(quint8 number)
{
    return hexadecimal(number, 2);
}

QString DocumentText::dataType(int dataType)
{
    const QString name = COHelper::index2DataTypeString(quint16(dataType));
    return name.isEmpty() && dataType != 0 ? QString::number(dataType) : name;
}

QString DocumentText::name(const ListedObject &object, quint8 line)
{
    return Helper::substituteVariables(object.name(), object.index, 0, line);
}

QString DocumentText::name(const ListedObject &object, const ListedSubIndex &sub, quint8 line)
{
    return Helper::substituteVariables(object.name(sub), object.index, sub.number, line);
}

QString DocumentText::lines(const QString &text)
{
    return text.contains(u'\r') ? QString(text).replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n') : text;
}
