#include "importers/CsvCommands.h"

#include "importers/CsvNumber.h"
#include "store/ObjectDataBase.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace CsvCommands {

namespace {

constexpr QLatin1StringView copyLetter = "c"_L1;
constexpr QLatin1StringView deleteLetter = "d"_L1;

/** An index that an object can have. */
std::optional<quint16> objectIndex(const QString &text)
{
    const auto index = csvNumber<quint16>(text);
    return index && *index != 0 ? index : std::nullopt;
}

Command objectCopy(const QStringList &fields)
{
    const auto source = objectIndex(fields[1]);
    const auto destination = objectIndex(fields[2]);
    if (!source || !destination)
        return {};
    return Copy({.index = *source}, {.index = *destination});
}

Command subIndexCopy(const QStringList &fields)
{
    const auto index = objectIndex(fields[1]);
    const auto source = csvNumber<quint8>(fields[2]);
    const auto destination = csvNumber<quint8>(fields[3]);
    if (!index || !source || !destination || source == destination)
        return {};
    return Copy({*index, *source}, {*index, *destination});
}

Command objectDelete(const QStringList &fields)
{
    const auto index = objectIndex(fields[1]);
    return index ? Command(Delete{.index = *index}) : Command();
}

Command subIndexDelete(const QStringList &fields)
{
    const auto index = objectIndex(fields[1]);
    const auto subIndex = csvNumber<quint8>(fields[2]);
    return index && subIndex ? Command(Delete{*index, *subIndex}) : Command();
}

struct Form
{
    QLatin1StringView letter;
    qsizetype fields;
    Command (*read)(const QStringList &);
};

constexpr Form forms[] = {
    {copyLetter, 3, objectCopy},
    {copyLetter, 4, subIndexCopy},
    {deleteLetter, 2, objectDelete},
    {deleteLetter, 3, subIndexDelete},
};

QString nameOf(const Address &address)
{
    const QString index = u"0x%1"_s.arg(address.index, 4, 16, QLatin1Char('0'));
    return address.subIndex ? u"%1:%2"_s.arg(index).arg(*address.subIndex) : index;
}

bool exists(ObjectDataBase &store, quint8 line, const Address &address)
{
    return address.subIndex ? store.subIndexExists(line, address.index, *address.subIndex)
                            : store.indexExists(line, address.index);
}

bool copySubIndex(ObjectDataBase &store, quint8 line, const Copy &copy)
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    return store.getSubIndex(line, copy.first.index, *copy.first.subIndex, data)
        && store.addSubIndex(line, copy.second.index, *copy.second.subIndex, data);
}

bool told(bool success, const QString &what)
{
    if (!success)
        qWarning().noquote() << what;
    return success;
}

} // namespace

bool isCommand(QStringView line)
{
    return line.startsWith(copyLetter) || line.startsWith(deleteLetter);
}

Command parse(const QStringList &fields)
{
    for (const Form &form : forms) {
        if (fields.size() == form.fields && fields.constFirst().trimmed() == form.letter)
            return form.read(fields);
    }
    return {};
}

bool apply(ObjectDataBase &store, quint8 line, const Copy &copy)
{
    const bool success = exists(store, line, copy.first)
        && (copy.first.subIndex ? copySubIndex(store, line, copy)
                                : store.copyIndex(line, copy.first.index, line, copy.second.index));
    return told(success,
                u"Cannot copy %1 to %2 on line %3."_s.arg(nameOf(copy.first), nameOf(copy.second)).arg(line));
}

bool apply(ObjectDataBase &store, quint8 line, const Delete &address)
{
    const bool success = exists(store, line, address)
        && (address.subIndex ? store.removeSubIndex(line, address.index, *address.subIndex)
                             : store.removeIndex(line, address.index));
    return told(success, u"Cannot delete %1 on line %2."_s.arg(nameOf(address)).arg(line));
}

} // namespace CsvCommands
