#pragma once

#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QTest>

namespace TemplateFile {

constexpr QLatin1StringView resourceFolder(":/databases/data/");

/** A template among the resources, opened by the edition that uses it. */
class Template : public ObjectDataBase
{
public:
    explicit Template(const QString &name)
    {
        const bool isJ1939 = name == QStringLiteral("mtj1939");
        QCoreApplication::setApplicationName(isJ1939 ? QStringLiteral("J1939 NodeSmith")
                                                     : QStringLiteral("CANopen NodeSmith"));
        if (!openDataBase(resourceFolder + name + QStringLiteral(".data")))
            qFatal("cannot open %s: %s", qPrintable(name), qPrintable(lastError()));
    }

    /** All entries of line 0, in dictionary order. */
    QList<SubEntry> subIndices()
    {
        QList<SubEntry> entries;
        const QList<quint16> indices = getIndexList(0);
        for (const quint16 index : indices) {
            const QList<quint8> list = getSubIndexList(0, index);
            for (const quint8 subindex : list) {
                SubEntry entry{.line = 0, .index = index, .subindex = subindex, .data = {}};
                if (!getSubIndex(0, index, subindex, entry.data))
                    qFatal("cannot read 0x%x:%d", uint(index), int(subindex));
                entries.append(entry);
            }
        }
        return entries;
    }
};

/** A row of a table of expected values; limits as "low..up". */
inline void addValueColumns()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("subindex");
    QTest::addColumn<int>("datatype");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("limits");
    QTest::addColumn<int>("mapping");
    QTest::addColumn<int>("implementation");
}

inline void addValue(int index, int subindex, int datatype, const char *access, const char *value,
                     const char *limits, int mapping, int implementation)
{
    QTest::addRow("%X:%d", index, subindex)
        << index << subindex << datatype << QString::fromLatin1(access) << QString::fromLatin1(value)
        << QString::fromLatin1(limits) << mapping << implementation;
}

/** Compares the entry of the present row with the template. */
inline void compareValue(const QString &name)
{
    QFETCH(int, index);
    QFETCH(int, subindex);
    QFETCH(int, datatype);
    QFETCH(QString, access);
    QFETCH(QString, value);
    QFETCH(QString, limits);
    QFETCH(int, mapping);
    QFETCH(int, implementation);
    Template store(name);
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, quint16(index), quint8(subindex), sub));
    QCOMPARE(sub.datatype, datatype);
    QCOMPARE(sub.accesstype, access);
    QCOMPARE(sub.defaultvalue, value);
    QCOMPARE(QString(sub.lowlimit + QStringLiteral("..") + sub.uplimit), limits);
    QCOMPARE(int(sub.pdomapping.toUInt()), mapping);
    QCOMPARE(sub.implementation, implementation);
    QCOMPARE(sub.varname, QStringLiteral(" "));
    QCOMPARE(sub.allowedaccesstypes, QStringLiteral("const,ro,rw,wo,rww,rwr"));
}

} // namespace TemplateFile
