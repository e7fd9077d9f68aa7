#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "store/ObjectDataBase.h"

#include <QSharedPointer>
#include <QString>
#include <QStringList>

namespace CheckTest {

using Index = ObjectDataBase::INDEX_DATA_T;
using Sub = ObjectDataBase::SUBINDEX_DATA_T;
using Pgn = ObjectDataBase::PGN;
using Spn = ObjectDataBase::SPN;
using CanId = ObjectDataBase::CANID;
using Element = ObjectDataBase::DataElement;

/** What a line carries; the numbers of the setting "line<n>type". */
enum LineType {
    CANopenLine = 1,
    J1939Line = 2,
    RawCanLine = 4,
    CANopenAndJ1939 = 5,
    CANopenAndRawCan = 6,
    J1939AndRawCan = 7,
};

/** The column writedefaulttoeds. */
enum WriteDefault { Never = 0, WithDefault = 1, Always = 2 };

/** An application object of the valid projects: mappable, no limits. */
Sub sub(const QString &name, int type, const QString &access, const QString &value);
/** Sub-index 0 of an array or record as the check wants it. */
Sub countSub(int highest);

/**
 * A project that no rule has anything to say about, with short ways to spoil it.
 *
 * The CANopen line holds 0x1000, 0x1001, 0x1005, 0x1017, 0x1018, a static receive PDO (0x1400, 0x1600),
 * a static transmit PDO (0x1800, 0x1A00), the array 0x2000 and the variables 0x2001 (application variable
 * "speed") and 0x2002 (text). The J1939 line receives PGN 61444 and sends 65226, the raw CAN line receives
 * 0x123 and sends 0x124. Operations without a line mean `line`; a failing write ends the test program.
 */
class Project
{
public:
    explicit Project(int lineType = CANopenLine);
    /** A project file that was saved. */
    explicit Project(const QString &path);

    const QSharedPointer<ObjectDataBase> store;
    quint8 line = 0;

    /** Another valid line of the type; `line` moves there. */
    void addLine(quint8 number, int lineType);

    // --- Settings ---
    void set(const QString &key, const QString &value) const;
    void setForLine(const QString &key, const QString &value) const;
    void setDescription(const QString &key, const QString &value) const;
    void setJ1939(const QString &key, const QString &value) const;
    void setMisc(const QString &key, const QString &value) const;
    /** CAN FD with the device type as an array, as CiA 1301 has it. */
    void makeFd() const;

    // --- Objects ---
    void object(quint16 index, int objectCode, const QString &name = QStringLiteral("Object")) const;
    /** A variable with its one sub-index. */
    void variable(quint16 index, const Sub &data) const;
    /** An array with sub-index 0 and one "rw" UNSIGNED32 for each value. */
    void array(quint16 index, const QStringList &values) const;
    void put(quint16 index, quint8 subIndex, const Sub &data) const;
    Sub get(quint16 index, quint8 subIndex) const;
    template <typename Edit>
    void edit(quint16 index, quint8 subIndex, Edit edit) const
    {
        Sub data = get(index, subIndex);
        edit(data);
        put(index, subIndex, data);
    }
    void value(quint16 index, quint8 subIndex, const QString &text) const;
    void type(quint16 index, quint8 subIndex, int dataType, const QString &value) const;
    void access(quint16 index, quint8 subIndex, const QString &access) const;
    void implementation(quint16 index, quint8 subIndex, int kind) const;
    void varName(quint16 index, quint8 subIndex, const QString &name) const;
    void writeDefault(quint16 index, quint8 subIndex, WriteDefault when) const;
    void limits(quint16 index, quint8 subIndex, const QString &low, const QString &up) const;
    void rename(quint16 index, const QString &name) const;
    void remove(quint16 index) const;
    void removeSub(quint16 index, quint8 subIndex) const;

    // --- PDOs ---
    /** A PDO: communication object with this COB-ID, mapping object 0x200 above it. */
    void pdo(quint16 index, const QString &cobId, const QStringList &entries,
             const QString &access = QStringLiteral("const")) const;
    /** The communication object alone. */
    void pdoCommunication(quint16 index, const QString &cobId) const;
    /** The mapping object alone; `count` is the value of sub-index 0, empty for the number of entries. */
    void mapping(quint16 index, const QStringList &entries, const QString &access = QStringLiteral("const"),
                 const QString &count = QString()) const;

    // --- J1939 and raw CAN ---
    void pgn(quint32 number, quint8 direction, const QString &name = QStringLiteral("Group")) const;
    /** A signal that follows the last one of its group; application variable "v<pgn>_<spn>_<direction>". */
    void spn(quint32 pgn, quint8 direction, quint32 number, int type, int bits, int position) const;
    template <typename Edit>
    void editPgn(quint32 number, quint8 direction, Edit edit) const
    {
        Pgn data;
        require(store->getPGN(line, number, direction, data));
        edit(data);
        require(store->addPGN(line, number, data));
    }
    template <typename Edit>
    void editSpn(quint32 pgn, quint8 direction, quint32 number, Edit edit) const
    {
        Spn data;
        require(store->getSPN(line, pgn, direction, number, data));
        edit(data);
        require(store->addSPN(line, pgn, direction, number, data));
    }
    void removePgn(quint32 number, quint8 direction) const;
    void removeSpn(quint32 pgn, quint8 direction, quint32 number) const;
    void canId(quint32 id, quint8 direction) const;
    /** A signal of a message; application variable "v<id>_<number>_<direction>", named like its number. */
    void element(quint32 id, quint8 direction, quint32 number, int type, int bits, int position) const;
    template <typename Edit>
    void editElement(quint32 id, quint8 direction, quint32 number, Edit edit) const
    {
        Element data;
        require(store->getDataElement(line, id, direction, number, data));
        edit(data);
        require(store->addDataElement(line, id, direction, number, data));
    }

    void removeElement(quint32 id, quint8 direction, quint32 number) const;

private:
    static void require(bool success);
    void addCANopen() const;
    void addJ1939() const;
    void addRawCan() const;
};

/** Writes a file that tells which tool version a stack wants; gives its folder. */
QString stackFolder();

} // namespace CheckTest
