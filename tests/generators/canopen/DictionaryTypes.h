#pragma once

#include "store/ObjectDataBase.h"

#include <QByteArray>
#include <QSet>
#include <QString>

/** What CiA 301 and the stack make of the data types and objects of a project, told for the tests' own sake.
 */
namespace DictionaryTypes {

/** How the stack keeps the values of a type. */
struct Type
{
    enum Kind { NoTable, Unsigned, Signed, Real, Text, Block };

    QString name;
    Kind kind = NoTable;
    int bits = 0;
    bool isNumber() const { return kind == Unsigned || kind == Signed || kind == Real; }
};

Type type(int dataType);

/** The REAL32 of a text of the project; 0 for what no literal of C can be, without a sign. */
float realValue(const QString &text);
/** A REAL32 as the run-time prints it: "f" and its bits. */
QString real(float value);
/** A text of the project as the type's number; `base` as QString has it. "-" for a type without numbers. */
QString number(const Type &type, const QString &text, int signedBase);
/** The default value without what the node identifier adds. */
QString defaultNumber(const ObjectDataBase::SUBINDEX_DATA_T &sub);
/** What a variable of the stack has at the start: its default, with the digits that an initialiser has. */
QString atStart(ObjectDataBase &store, const ObjectDataBase::SUBINDEX_DATA_T &sub);
QByteArray textBytes(const QString &text);

/** The SDO server of a J1939 device: all arrays in full, and texts without default values. */
bool isJ1939Server(ObjectDataBase &store);

bool isWritable(const ObjectDataBase::SUBINDEX_DATA_T &sub);

/** A service that holds a value: the suffix of its specifier, and what it is known by; empty where none does.
 */
struct Service
{
    QString specifier;
    int reference = 0;
};

/** Which service holds which values of a project. */
class Services
{
public:
    explicit Services(ObjectDataBase &store);

    /** That of the sub-index of a line; a constant has none. */
    Service of(quint8 line, quint16 index, quint8 sub) const;
    bool hold(quint8 line, quint16 index, quint8 sub) const
    {
        return !of(line, index, sub).specifier.isEmpty();
    }

private:
    /** Static data of SRDOs (CiA 304) is that of the SRDO source. */
    QSet<quint32> m_srdoData;
};

/** Values that have no variable in the tables, whoever describes them (CiA 301, CiA 302, CiA 304). */
bool isKeptByStack(quint16 index, quint8 sub);

} // namespace DictionaryTypes
