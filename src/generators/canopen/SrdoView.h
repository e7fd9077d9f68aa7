#pragma once

#include "generators/canopen/ObjectDictionaryView.h"

#include <QList>
#include <QString>

#include <array>

/** How the values of a typed table travel in an SRDO. */
struct SrdoValueForm
{
    enum class Kind : quint8 {
        Unsigned,
        Signed,
        Real, ///< by its bits
        Bytes, ///< no number of C: an array of bytes, the least significant one first
    };

    CValues::Table table;
    Kind kind;
    quint8 size; ///< bytes in a message
    QStringView word; ///< unsigned C type of that width, of a single byte for Bytes
    QStringView scratch; ///< local variable of the template with that width

    /** Null for values that no SRDO can carry. */
    static const SrdoValueForm *of(CValues::Table table);
};

/** A variable of the device that SRDOs carry. */
struct SrdoVariable
{
    quint32 key = 0; ///< see ObjectKey; of line 0 for a shared one
    const SrdoValueForm *form = nullptr;
    QString name; ///< C expression of the variable
    QString address; ///< C expression of its address
    QString temporary; ///< what was received last, not yet checked; empty where it is not received
    bool isDeclared = false; ///< stands in the SRDO source; otherwise it is one of the application's
};

/** A value in the messages of an SRDO. */
struct SrdoValue
{
    quint32 entry = 0; ///< the mapping entry
    int offset = 0; ///< of its first byte
    int size = 0; ///< bytes
    int variable = -1; ///< in SrdoView::variables; none where the value is not supported
    int inverted = -1; ///< variable of the inverted copy where the device has one beside the normal one
};

/** A safety relevant data object. */
struct Srdo
{
    quint16 index = 0; ///< of the communication object
    quint16 number = 0; ///< from 1
    QString id; ///< in C names: "1", "1_line0"
    quint32 direction = 0;
    quint32 refreshTime = 0; ///< ms
    quint32 validationTime = 0; ///< ms
    QString cobId1; ///< C expression; may depend on ownNodeId
    QString cobId2;
    quint32 signature = 0; ///< CRC of the configuration
    QList<quint32> mapTable; ///< the entries of the mapping object from sub-index 1; 0 where one is missing
    quint32 mapCnt = 0; ///< those in use
    int mapLen = 0; ///< bytes of a message, at most 8
    QList<SrdoValue> values;
};

struct SrdoLine
{
    quint8 number = 0;
    QList<Srdo> srdos; ///< ascending
};

/** A row of the tables by which the object dictionary finds variables of the SRDO source. */
struct SrdoOdEntry
{
    quint8 line = 0;
    quint16 index = 0;
    quint8 subIndex = 0;
    QString address; ///< "NULL" where the variable is not in reach
};

/** The SRDOs of a project as gen_srdo.c tells them: computed once, before anything is written. */
struct SrdoView
{
    /** The tables that variables of SRDOs are found by, in their order in the file. */
    static constexpr std::array odEntryTables{
        CValues::Table::U8, CValues::Table::U16, CValues::Table::U32, CValues::Table::U64,
        CValues::Table::I8, CValues::Table::I16, CValues::Table::I32, CValues::Table::R32,
    };

    bool isMultiLineForm = false;
    QStringList applicationHeaders;
    qsizetype lineCount = 1; ///< lines of the project
    QList<SrdoLine> lines; ///< those with SRDOs, ascending
    QList<SrdoVariable> variables; ///< in the order of their first appearance
    ByTable<SrdoOdEntry> odEntries; ///< filled for static SRDO data only

    /** `withOdEntries`: the variables stand in the SRDO source, and the dictionary has to find them there. */
    static SrdoView read(const ObjectDictionaryView &dictionary, bool withOdEntries);

    /** Whether some COB-ID depends on the node-ID. */
    bool usesNodeId() const;
};
