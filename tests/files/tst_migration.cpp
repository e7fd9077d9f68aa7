#include "files/ProjectFiles.h"

#include <QTemporaryDir>

using namespace ProjectFiles;

namespace {

/** The tables of the first released schema, before any column was added to it. */
QStringList firstSchema()
{
    return {
        QStringLiteral("create table Strings (id integer primary key, string text)"),
        QStringLiteral(
            "create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text)"),
        QStringLiteral("create table Connections (prodnode integer, prodindex integer, prodsub integer, "
                       "connode integer, conindex integer, consub integer)"),
        QStringLiteral("insert into Strings values (1, ''), (2, 'Device type'), (3, 'Speed'), (4, 'value')"),
        QStringLiteral("insert into Nodes values (0, 'node', '', '')"),
    };
}

QStringList lineTables(int line)
{
    const QStringList statements{
        QStringLiteral("create table Objects%1 (objectindex integer primary key, name integer, "
                       "datatype integer not null, objecttype integer not null, description integer, "
                       "category integer)"),
        QStringLiteral(
            "create table SubObjects%1 (objectindex integer not null, subindex integer not null, "
            "name integer, datatype integer not null, accesstype text, defaultvalue text, "
            "currentvalue text, pdomapping integer, lowlimit integer, uplimit integer, size integer, "
            "defaultineds integer, limitineds integer, refuseread integer, refusewrite integer, "
            "allowedaccesstypes text, implementation integer, varname text, description integer, "
            "category integer)"),
        QStringLiteral(
            "create table PGNs%1 (number integer not null, edp_dp_key integer, priority integer, "
            "cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, "
            "name integer, desc integer)"),
        QStringLiteral(
            "create table SPNs%1 (pgnnumber integer not null, spnnumber integer not null, "
            "datatype integer, implementation integer, varname text, defaultvalue text, name integer, "
            "desc integer)"),
        QStringLiteral("create table CANIDs%1 (id integer not null, cycletime_ms integer, "
                       "inhibittime_ms integer, mappingcount integer, direction integer, name integer, "
                       "desc integer)"),
        QStringLiteral(
            "create table DataElements%1 (canid integer not null, number integer not null, "
            "datatype integer, implementation integer, varname text, defaultvalue text, name integer, "
            "desc integer, pos integer, bitsize integer, direction integer)"),
    };
    QStringList made;
    for (const QString &statement : statements)
        made.append(statement.arg(line));
    return made;
}

QStringList settings(int version, const QString &lineType)
{
    return {QStringLiteral("create table GeneralSettings (item text unique, value text)"),
            QStringLiteral("create table MiscSettings (item text unique, value text)"),
            QStringLiteral("insert into GeneralSettings values ('line0type', '%1')").arg(lineType),
            QStringLiteral("insert into MiscSettings values ('DatabaseVersion', '%1')").arg(version)};
}

} // namespace

class Migration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { nameApplication(); }

    void init()
    {
        m_path = m_folder.filePath(QStringLiteral("old.vexp"));
        QFile::remove(m_path);
    }

    void firstSchemaWithoutSettingsOpensWithEveryColumn()
    {
        makeFile(firstSchema() + lineTables(0)
                 + QStringList{
                     QStringLiteral("insert into Objects0 values (4096, 2, 7, 7, 1, 1)"),
                     QStringLiteral("insert into SubObjects0 values (4096, 0, 2, 7, 'ro', '0x191', '', 0, 0, "
                                    "4294967295, 0, 1, 0, 0, 0, 'ro', 0, ' ', 1, 1)"),
                 });
        ObjectDataBase store;
        QVERIFY2(store.openDataBase(m_path), qPrintable(store.lastError()));
        QVERIFY(!store.isExternallyModified());
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 4096, 0, sub));
        QCOMPARE(sub.name, QStringLiteral("Device type"));
        QCOMPARE(sub.uplimit, QStringLiteral("4294967295"));
        sub.nvstorage = true;
        sub.denotation = QStringLiteral("kind");
        sub.metadata.insert(QStringLiteral("unit"), QStringLiteral("none"));
        QVERIFY(store.addSubIndex(0, 4096, 0, sub));
        ObjectDataBase::SUBINDEX_DATA_T read;
        QVERIFY(store.getSubIndex(0, 4096, 0, read));
        QCOMPARE(read, sub);
        QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("1"));
        QCOMPARE(store.getUDSActiveServices(0).size(), 17);
    }

    void lineWithoutTypeAndWithMoreGroupsThanObjectsIsJ1939()
    {
        makeFile(firstSchema() + lineTables(0)
                 + QStringList{QStringLiteral("insert into PGNs0 values (65280, 0, 6, 0, 0, 0, 85, 3, 1)")});
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("2"));
    }

    void version99FillsSignalDirectionsAndIsRebuiltWithAuthentication()
    {
        makeFile(firstSchema() + lineTables(0) + settings(99, QStringLiteral("2"))
                 + QStringList{
                     QStringLiteral("create table UDSSettings0 (sid integer not null, active integer, "
                                    "sessions text, userlevels text, UNIQUE(sid))"),
                     QStringLiteral("insert into UDSSettings0 values (34, 1, '1', '2')"),
                     QStringLiteral("insert into PGNs0 values (65280, 0, 6, 0, 0, 0, 85, 3, 1)"),
                     QStringLiteral("insert into PGNs0 values (65281, 0, 6, 0, 0, 0, 119, 3, 1)"),
                     QStringLiteral("insert into SPNs0 values (65280, 1, 5, 0, '', '0', 4, 1)"),
                     QStringLiteral("insert into SPNs0 values (65281, 2, 5, 0, '', '0', 4, 1)"),
                 });
        QCoreApplication::setApplicationName(QStringLiteral("J1939 NodeSmith"));
        ObjectDataBase store;
        QVERIFY2(store.openDataBase(m_path), qPrintable(store.lastError()));
        nameApplication();
        QCOMPARE(store.getSPNList(0, 65280, ObjectDataBase::Transmit), QList<quint32>{1});
        QCOMPARE(store.getSPNList(0, 65281, ObjectDataBase::Receive), QList<quint32>{2});
        QCOMPARE(store.getPGNMappingCount(0, 65281, ObjectDataBase::Receive), 1);
        QVERIFY(store.setUDSAuthentication(0, UDS::SID(34), QStringLiteral("x")));
        QCOMPARE(store.getUDSAuthentication(0, UDS::SID(34)), QStringLiteral("x"));
        QCOMPARE(store.getUDSServiceSessions(0, UDS::SID(34)), QStringLiteral("1"));
        QVERIFY(store.executeSql(QStringLiteral("select name from pragma_index_list('SubObjects0')")));
        QCOMPARE(store.sqlResult().size(), 1);
    }

    void doubleAndNullRowsOfTheOldTableSurviveTheRebuild()
    {
        makeFile(
            firstSchema() + lineTables(0) + settings(100, QStringLiteral("1"))
            + QStringList{
                QStringLiteral("insert into Objects0 values (8192, 3, 7, 9, 1, 1)"),
                QStringLiteral("insert into SubObjects0 (objectindex, subindex, name, datatype, "
                               "defaultvalue) values (8192, 1, 3, 7, 'old')"),
                QStringLiteral("insert into SubObjects0 (objectindex, subindex, name, datatype, accesstype, "
                               "defaultvalue, implementation) values (8192, 1, 3, 7, 'rw', 'new', 0)"),
                QStringLiteral("insert into SubObjects0 (objectindex, subindex, name, datatype) "
                               "values (8192, 2, 4, 5)"),
            });
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QCOMPARE(store.getSubIndexList(0, 8192), (QList<quint8>{1, 2}));
        QCOMPARE(store.getSubIndexDefault(0, 8192, 1), QStringLiteral("new"));
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 8192, 2, sub));
        QCOMPARE(sub.name, QStringLiteral("value"));
        sub.defaultvalue = QStringLiteral("7");
        QVERIFY(store.addSubIndex(0, 8192, 2, sub));
        QCOMPARE(store.getSubIndexDefault(0, 8192, 2), QStringLiteral("7"));
        QCOMPARE(store.getSubIndexList(0, 8192), (QList<quint8>{1, 2}));
    }

    void version104NumbersPositionsThatWereNeverWorkedOut()
    {
        makeFile(
            firstSchema() + lineTables(0) + settings(104, QStringLiteral("4"))
            + QStringList{
                QStringLiteral("insert into CANIDs0 values (256, 0, 0, 0, 85, 3, 1)"),
                QStringLiteral("insert into DataElements0 values (256, 0, 5, 0, '', '', 4, 1, 0, 8, 85)"),
                QStringLiteral("insert into DataElements0 values (256, 1, 6, 0, '', '', 4, 1, 1, 16, 85)"),
                QStringLiteral("insert into DataElements0 values (256, 2, 5, 0, '', '', 4, 1, 2, 8, 85)"),
            });
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QList<int> positions;
        for (const quint32 number : store.getDataElementList(0, 256, ObjectDataBase::Transmit)) {
            ObjectDataBase::DataElement element;
            QVERIFY(store.getDataElement(0, 256, ObjectDataBase::Transmit, number, element));
            positions.append(element.bitpos);
        }
        QCOMPARE(positions, (QList<int>{0, 8, 24}));
    }

    void missingSignalTableOfLine0IsMadeWithBothSpellings()
    {
        QStringList statements = firstSchema() + lineTables(0) + settings(106, QStringLiteral("1"));
        statements.append(QStringLiteral("drop table SPNs0"));
        makeFile(statements);
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QVERIFY(store.executeSql(QStringLiteral("select bitpostion, bitposition from SPNs0")));
        QVERIFY(store.addSPN(0, 65280, ObjectDataBase::Transmit, 1, {.bitsize = 8, .bitposition = 16}));
        ObjectDataBase::SPN spn;
        QVERIFY(store.getSPN(0, 65280, ObjectDataBase::Transmit, 1, spn));
        QCOMPARE(spn.bitposition, 16);
    }

    void secondOpenOfASavedMigrationChangesNothing()
    {
        makeFile(firstSchema() + lineTables(0) + settings(99, QStringLiteral("1")));
        {
            ObjectDataBase store;
            QVERIFY(store.openDataBase(m_path));
            QVERIFY(store.saveProject(QString()));
        }
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QVERIFY(!store.isExternallyModified());
        QCOMPARE(store.getMiscSetting(QStringLiteral("DatabaseVersion")), QStringLiteral("107"));
        QCOMPARE(store.contentHash(), store.getMiscSetting(QStringLiteral("FileHash")));
    }

    void outsideModificationIsRecordedAndStaysRecorded()
    {
        QVERIFY(make(m_path, 3));
        {
            PlainDatabase other(m_path);
            QVERIFY(
                other.exec(QStringLiteral("update SubObjects0 set defaultvalue = '99' where subindex = 1")));
        }
        ObjectDataBase store;
        QVERIFY(store.openDataBase(m_path));
        QVERIFY(store.isExternallyModified());
        const QString log = store.getMiscSetting(QStringLiteral("TamperLog"));
        QVERIFY(QDateTime::fromString(log, Qt::ISODate).isValid());
        QVERIFY(store.saveProject(QString()));
        ObjectDataBase again;
        QVERIFY(again.openDataBase(m_path));
        QVERIFY(!again.isExternallyModified());
        QCOMPARE(again.getMiscSetting(QStringLiteral("TamperLog")), log);
    }

private:
    void makeFile(const QStringList &statements)
    {
        PlainDatabase file(m_path);
        for (const QString &statement : statements)
            QVERIFY2(file.exec(statement), qPrintable(statement));
    }

    QTemporaryDir m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(Migration)
#include "tst_migration.moc"
