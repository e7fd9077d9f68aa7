#pragma once

#include "store/ObjectDataBase.h"

/**
 * The three two-level parts of a line as a comparison sees them: a parent record, found by number and
 * direction, and its numbered children. Objects have no direction (0).
 */

struct ObjectRecords
{
    using Parent = ObjectDataBase::INDEX_DATA_T;
    using Child = ObjectDataBase::SUBINDEX_DATA_T;

    /** Below stand the data types (CiA 301), which no project changes. */
    static constexpr quint16 firstIndex = 0x1000;

    static auto numbers(ObjectDataBase &store, quint8 line, quint8)
    {
        return store.getIndexList(line, firstIndex, 0xFFFF);
    }
    static auto childNumbers(ObjectDataBase &store, quint8 line, quint32 index, quint8)
    {
        return store.getSubIndexList(line, quint16(index));
    }
    static bool read(ObjectDataBase &store, quint8 line, quint32 index, quint8, Parent &object)
    {
        return store.getIndex(line, quint16(index), object);
    }
    static bool readChild(ObjectDataBase &store, quint8 line, quint32 index, quint8, quint32 subindex,
                          Child &sub)
    {
        return store.getSubIndex(line, quint16(index), quint8(subindex), sub);
    }
    static void fillCache(ObjectDataBase &store, quint8 line) { store.cacheAllSubs(line); }
    static void clearCache(ObjectDataBase &store) { store.clearSubCache(); }
};

struct PgnRecords
{
    using Parent = ObjectDataBase::PGN;
    using Child = ObjectDataBase::SPN;

    static auto numbers(ObjectDataBase &store, quint8 line, quint8 direction)
    {
        return store.getPGNList(line, direction);
    }
    static auto childNumbers(ObjectDataBase &store, quint8 line, quint32 number, quint8 direction)
    {
        return store.getSPNList(line, number, direction);
    }
    static bool read(ObjectDataBase &store, quint8 line, quint32 number, quint8 direction, Parent &pgn)
    {
        return store.getPGN(line, number, direction, pgn);
    }
    static bool readChild(ObjectDataBase &store, quint8 line, quint32 number, quint8 direction, quint32 spn,
                          Child &data)
    {
        return store.getSPN(line, number, direction, spn, data);
    }
    static void fillCache(ObjectDataBase &store, quint8 line) { store.cacheAllSpns(line); }
    static void clearCache(ObjectDataBase &store) { store.clearSpnCache(); }
};

struct CanIdRecords
{
    using Parent = ObjectDataBase::CANID;
    using Child = ObjectDataBase::DataElement;

    static auto numbers(ObjectDataBase &store, quint8 line, quint8 direction)
    {
        return store.getCANIDList(line, direction);
    }
    static auto childNumbers(ObjectDataBase &store, quint8 line, quint32 id, quint8 direction)
    {
        return store.getDataElementList(line, id, direction);
    }
    static bool read(ObjectDataBase &store, quint8 line, quint32 id, quint8 direction, Parent &canId)
    {
        return store.getCANID(line, id, direction, canId);
    }
    static bool readChild(ObjectDataBase &store, quint8 line, quint32 id, quint8 direction, quint32 number,
                          Child &data)
    {
        return store.getDataElement(line, id, direction, number, data);
    }
    static void fillCache(ObjectDataBase &, quint8) { }
    static void clearCache(ObjectDataBase &) { }
};
