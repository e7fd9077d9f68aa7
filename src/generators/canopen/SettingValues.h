#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class ObjectDataBase;

/**
 * One settings table of a project, read once.
 *
 * A setting that is missing reads as empty. Numbers are decimal; a text that is no number, and a negative
 * one, counts as 0.
 */
class SettingValues
{
public:
    SettingValues() = default;
    static SettingValues general(ObjectDataBase &store);
    static SettingValues j1939(ObjectDataBase &store);
    static SettingValues energyBus(ObjectDataBase &store);

    bool contains(const QString &key) const { return m_values.contains(key); }
    /** As it stands. */
    QString value(const QString &key) const { return m_values.value(key); }
    /** Without the blanks around it, and in one line. */
    QString text(const QString &key) const { return value(key).simplified(); }
    quint32 number(const QString &key) const { return toNumber(value(key)); }
    /** A switch that is a number above 0. */
    bool isOn(const QString &key) const { return number(key) > 0; }

    /** The element of a comma-separated list with one per line; behind its end the last one. */
    QString forLine(const QString &key, quint8 line) const;
    quint32 numberForLine(const QString &key, quint8 line) const { return toNumber(forLine(key, line)); }
    /** The element of a comma-separated list; behind its end empty. */
    QString entry(const QString &key, quint8 line) const;

    static quint32 toNumber(const QString &text);

private:
    QHash<QString, QString> m_values;
};
