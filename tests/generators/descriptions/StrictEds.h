#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * A device description as CiA 306 defines it, read without any tolerance.
 *
 * Independent of the reader of the product: what that one forgives is an error here. Errors are texts with
 * the number of their line; a file without errors has sections and keys that the standard knows, lists that
 * agree with the objects, counts that are right and values that are numbers where they have to be.
 */
class StrictEds
{
public:
    using Section = QMap<QString, QString>;

    explicit StrictEds(const QByteArray &file);

    const QStringList &errors() const { return m_errors; }
    const QMap<QString, Section> &sections() const { return m_sections; }
    /** A value; "<missing>" where the section or the key is not there. */
    QString value(const QString &section, const QString &key) const;

private:
    void readLines(const QByteArray &file);
    void readEntry(const QString &line, int number);
    void error(const QString &text) { m_errors.append(text); }
    void checkInformation();
    void checkKeys(const QString &section, const QStringList &keys);
    void checkFlags(const QString &section, const QStringList &keys);
    void checkComments();
    void checkLists();
    QStringList listed(const QString &section);
    void checkObject(const QString &name);
    void checkStructure(const QString &name);
    void checkEntry(const QString &name);
    void checkNumber(const QString &section, const QString &key, qlonglong lowest, qlonglong highest);
    void checkCount(const QString &section, const QString &key, qsizetype count);

    QMap<QString, Section> m_sections;
    QStringList m_order;
    QStringList m_errors;
};
