#pragma once

#include "store/ObjectDataBasePrivate.h"
#include "store/RowIo.h"

#include <QDebug>

#include <algorithm>

/** What the parameter groups of J1939 do not share with the messages of raw CAN. */
struct J1939Messages
{
    using Message = ObjectDataBase::PGN;
    using Signal = ObjectDataBase::SPN;

    static constexpr int messageChanged = ObjectDataBase::PgnChanged;
    static constexpr int messageRemoved = ObjectDataBase::PgnRemoved;
    static constexpr int signalChanged = ObjectDataBase::SpnChanged;
    static constexpr const char *removeSignals = "delete from SPNs%1 where pgnnumber = ? and direction = ?";
    /** Numbers with a row of their own, and those that only signals name. */
    static constexpr const char *occupied = "select number from PGNs%1 where direction = ? "
                                            "union select pgnnumber from SPNs%1 where direction = ?";
    static constexpr const char *copyFailed = "adPGN() failed: ";

    template <typename Store>
    static auto &signalCaches(Store &store)
    {
        return store.spnCache;
    }
    static ObjectDataBase::ChangeSet change(int type, quint8 line, quint32 message, quint32 signal = 0,
                                            quint8 direction = 0)
    {
        return {.type = type, .line = line, .pgn = message, .spn = signal, .direction = direction};
    }
};

/** What the messages of raw CAN do not share with the parameter groups of J1939. */
struct RawCanMessages
{
    using Message = ObjectDataBase::CANID;
    using Signal = ObjectDataBase::DataElement;

    static constexpr int messageChanged = ObjectDataBase::CanIdChanged;
    static constexpr int messageRemoved = ObjectDataBase::CanIdRemoved;
    static constexpr int signalChanged = ObjectDataBase::DataElementChanged;
    static constexpr const char *removeSignals =
        "delete from DataElements%1 where canid = ? and direction = ?";
    static constexpr const char *occupied = "select id from CANIDs%1 where direction = ? "
                                            "union select canid from DataElements%1 where direction = ?";
    static constexpr const char *copyFailed = "addCANID() failed: ";

    template <typename Store>
    static auto &signalCaches(Store &store)
    {
        return store.elementCache;
    }
    static ObjectDataBase::ChangeSet change(int type, quint8 line, quint32 message, quint32 signal = 0,
                                            quint8 direction = 0)
    {
        return {.type = type, .line = line, .canid = message, .element = signal, .direction = direction};
    }
};

template <typename Signal>
const ObjectDataBase::Private::SignalCache<Signal> *
ObjectDataBase::Private::cachedLine(const SignalCaches<Signal> &caches, quint8 line)
{
    const auto cached = caches.constFind(line);
    return cached == caches.constEnd() ? nullptr : &*cached;
}

template <typename Signal>
const Signal *ObjectDataBase::Private::cachedSignal(const SignalCaches<Signal> &caches, quint8 line,
                                                    MessageKey message, quint32 number)
{
    const SignalCache<Signal> *cached = cachedLine(caches, line);
    if (!cached)
        return nullptr;
    const auto members = cached->messages.constFind(message);
    if (members == cached->messages.constEnd())
        return nullptr;
    const auto record = std::find_if(members->records.cbegin(), members->records.cend(),
                                     [number](const auto &candidate) { return candidate.first == number; });
    return record == members->records.cend() ? nullptr : &record->second;
}

// Rows whose numbers name no signal are left out, as no read of the table finds them either; of several rows
// of one signal the first is found. A line that cannot be read to its end stays without a cache: the list of
// a message would pass for all of it.
template <typename Kind>
void ObjectDataBase::Private::fillSignalCache(quint8 line, const char *operation)
{
    const ConnectionGate::Lease lease(connection.gate);
    auto &caches = Kind::signalCaches(*this);
    caches.remove(line);
    SignalCache<typename Kind::Signal> cache;
    StoreQuery query(connection, Schema::sql<typename Kind::Signal>().selectAll.constData(), line, operation);
    RowIo::Reader<typename Kind::Signal> reader(texts());
    while (query.next()) {
        if (!query.holds<quint32>(0) || !query.holds<quint8>(2))
            continue;
        auto &members = cache.messages[messageKey(quint32(query.number(0)), quint8(query.number(2)))];
        const auto number = quint32(query.number(1));
        members.numbers.append(number);
        if (!query.holds<quint32>(1))
            continue;
        members.records.append({number, typename Kind::Signal()});
        reader.read(query, 3, members.records.last().second);
    }
    if (!query.failed())
        caches[line] = std::move(cache);
}

template <typename Kind>
void ObjectDataBase::Private::signalsHaveChanged(quint8 line)
{
    const ConnectionGate::Lease lease(connection.gate);
    Kind::signalCaches(*this).remove(line);
}

template <typename Kind>
bool ObjectDataBase::Private::addMessage(quint8 line, quint32 number, const typename Kind::Message &message,
                                         const char *operation)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    const bool success = insertOrUpdateRow(line, {number}, {number, message.direction}, message, operation);
    notify(Kind::change(Kind::messageChanged, line, number));
    return success;
}

template <typename Kind>
bool ObjectDataBase::Private::removeMessage(quint8 line, quint32 number, quint8 direction,
                                            const char *operation)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    bool success = change(Kind::removeSignals, line, {number, direction}, operation);
    success =
        change(Schema::sql<typename Kind::Message>().remove.constData(), line, {number, direction}, operation)
        && success;
    signalsHaveChanged<Kind>(line);
    notify(Kind::change(Kind::messageRemoved, line, number, 0, direction));
    return success;
}

template <typename Kind>
bool ObjectDataBase::Private::addSignal(quint8 line, quint32 message, quint8 direction, quint32 number,
                                        const typename Kind::Signal &data, const char *operation)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    const bool success =
        insertOrUpdateRow(line, {message, number, direction}, {message, number, direction}, data, operation);
    signalsHaveChanged<Kind>(line);
    notify(Kind::change(Kind::signalChanged, line, message, number));
    return success;
}

template <typename Kind>
bool ObjectDataBase::Private::removeSignal(quint8 line, quint32 message, quint8 direction, quint32 number,
                                           const char *operation)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    const bool success = change(Schema::sql<typename Kind::Signal>().remove.constData(), line,
                                {message, number, direction}, operation);
    signalsHaveChanged<Kind>(line);
    notify(Kind::change(SpnRemoved, line, message, number, direction));
    return success;
}

// The first of several rows of one number is the one that a search finds.
template <typename Kind>
ObjectDataBase::Private::MessageList<Kind> ObjectDataBase::Private::messagesOf(quint8 line, quint8 direction)
{
    MessageList<Kind> messages;
    StoreQuery query(connection, Schema::sql<typename Kind::Message>().selectAll.constData(), line);
    RowIo::Reader<typename Kind::Message> reader(texts());
    while (query.next()) {
        const auto number = quint32(query.number(0));
        typename Kind::Message message;
        reader.read(query, 1, message);
        if (message.direction == direction && (messages.isEmpty() || messages.last().first != number))
            messages.append({number, message});
    }
    return messages;
}

template <typename Kind>
QHash<quint32, ObjectDataBase::Private::SignalList<Kind>> ObjectDataBase::Private::signalsOf(quint8 line,
                                                                                             quint8 direction)
{
    QHash<quint32, SignalList<Kind>> found;
    QSet<std::pair<quint32, quint32>> seen;
    StoreQuery query(connection, Schema::sql<typename Kind::Signal>().selectAll.constData(), line);
    RowIo::Reader<typename Kind::Signal> reader(texts());
    while (query.next()) {
        const std::pair key(quint32(query.number(0)), quint32(query.number(1)));
        if (query.number(2) != direction || seen.contains(key))
            continue;
        seen.insert(key);
        typename Kind::Signal data;
        reader.read(query, 3, data);
        found[key.first].append({key.second, data});
    }
    return found;
}

// Fresh rows are inserted without a look-up: the tables have no key, so that every search in them walks all
// rows.
template <typename Kind>
bool ObjectDataBase::Private::insertMessage(quint8 line, quint32 number,
                                            const typename Kind::Message &message,
                                            const SignalList<Kind> &members)
{
    bool success = writeRow(Schema::sql<typename Kind::Message>().insert, line, {number}, message);
    if (!success)
        qDebug() << Kind::copyFailed << number;
    notify(Kind::change(Kind::messageChanged, line, number));
    for (const auto &[signal, data] : members) {
        success = writeRow(Schema::sql<typename Kind::Signal>().insert, line,
                           {number, signal, message.direction}, data)
            && success;
        notify(Kind::change(Kind::signalChanged, line, number, signal));
    }
    return success;
}

// The source is read once as a whole, and only what is there is removed.
template <typename Kind>
bool ObjectDataBase::Private::copyMessages(ObjectDataBase &source, quint8 fromLine, quint8 toLine,
                                           quint32 first, quint32 last, quint8 direction)
{
    const ConnectionGate::WriteLease lease(connection.gate);
    if (!lease)
        return false;
    if (&source == q && fromLine == toLine)
        return true;
    const auto messages = source.d->messagesOf<Kind>(fromLine, direction);
    const auto members = source.d->signalsOf<Kind>(fromLine, direction);
    const QList<quint32> occupied = numberList(Kind::occupied, toLine, {direction, direction});
    const QSet<quint32> replaced(occupied.begin(), occupied.end());
    bool success = true;
    for (const auto &[number, message] : messages) {
        if (number < first || number > last)
            continue;
        if (replaced.contains(number))
            removeMessage<Kind>(toLine, number, direction);
        success = insertMessage<Kind>(toLine, number, message, members.value(number)) && success;
    }
    signalsHaveChanged<Kind>(toLine);
    return success;
}
