#pragma once

#include "generators/canopen/SrdoView.h"

#include <QHash>
#include <QSet>

/**
 * Finds the C variable behind a mapped object and gives each a name that is valid in the SRDO source.
 *
 * With static SRDO data the variable stands there, under the name that the project has for it or, where that
 * is no name of C or taken by another type, under one of its own. Without, and where the object dictionary
 * names it too (for a PDO, or for another object) or could not find it in the SRDO source (SrdoView::
 * odEntryTables), it is the application's. Nothing is found for objects that do not exist, are constant or
 * virtual, have a type that no SRDO can carry, or live where the SRDO source cannot reach them.
 */
class SrdoVariables
{
public:
    /** Both live as long as this. */
    SrdoVariables(const ObjectDictionaryView &dictionary, QList<SrdoVariable> &variables);

    /** Position of the variable in the list, which it is appended to; -1 where there is none. */
    int add(quint8 line, quint16 index, quint8 subIndex);
    /** Whether two positions stand for one variable of C. */
    bool areOne(int first, int second) const;
    /** Gives the variable a place for received values. */
    void addTemporary(int variable);

private:
    void collectAddresses();
    const DictionarySubIndex *resolve(quint8 line, quint16 index, quint8 subIndex) const;
    int create(const DictionarySubIndex &sub);
    bool nameApplicationVariable(const DictionarySubIndex &sub, SrdoVariable &variable);
    void declare(SrdoVariable &variable, const QString &wanted);
    QString freeName(QString wanted, const QString &type) const;
    QString ownName(quint32 key) const;

    const ObjectDictionaryView &m_dictionary;
    QList<SrdoVariable> &m_variables;
    QHash<quint32, int> m_places; ///< by key
    QHash<QString, QString> m_types; ///< of the names that this file declares
    QSet<QString> m_applicationNames; ///< which a name of this file must not hide
    QSet<QString> m_dictionaryAddresses; ///< that the object dictionary has, where statics are out of sight
};
