#include "tools/DiffTest.h"
#include "tools/DiffTransfer.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace DiffTest;

class TestDiffTransfer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void anImportedObjectReplacesTheOwnOneWithAllItsSubIndices();
    void anImportedSubIndexReplacesTheOwnOne();
    void afterAnApplyTheOwnValuesStay();
    void theCompleteImportTakesTheValuesToo();
    void aNewSubIndexKeepsItsValuesAfterAnApply();
    void aSubIndexBringsItsObjectWhereThatIsMissing();
    void whatTheOtherProjectLacksCannotBeImported();
    void objectsAndSubIndicesAreRemoved();
    void aSettingIsTakenOver();
    void aLockedProjectRefusesEverything();

private:
    DiffTransfer transfer(bool isAfterApply = false) { return {*m_current, *m_other, 0, isAfterApply}; }
    ObjectDataBase::SUBINDEX_DATA_T ownSub(quint16 index, quint8 subindex)
    {
        ObjectDataBase::SUBINDEX_DATA_T data;
        return m_current->getSubIndex(0, index, subindex, data) ? data : sub(u"missing"_s);
    }

    QSharedPointer<ObjectDataBase> m_current;
    QSharedPointer<ObjectDataBase> m_other;
};

void TestDiffTransfer::init()
{
    m_current = makeStore();
    m_other = makeStore();
    auto own = sub(u"mine"_s, u"1"_s);
    own.currentvalue = u"10"_s;
    auto others = sub(u"yours"_s, u"2"_s);
    others.currentvalue = u"20"_s;
    others.uplimit = u"99"_s;
    QVERIFY(addObject(*m_current, 0x2000, u"Mine"_s, 3));
    QVERIFY(m_current->addSubIndex(0, 0x2000, 1, own));
    QVERIFY(addObject(*m_other, 0x2000, u"Yours"_s, 1));
    QVERIFY(m_other->addSubIndex(0, 0x2000, 1, others));
}

void TestDiffTransfer::anImportedObjectReplacesTheOwnOneWithAllItsSubIndices()
{
    QVERIFY(transfer().importObject(0x2000));
    QCOMPARE(m_current->getIndexName(0, 0x2000), u"Yours"_s);
    QCOMPARE(m_current->getSubIndexList(0, 0x2000), QList<quint8>({0, 1}));
    QCOMPARE(ownSub(0x2000, 1).defaultvalue, u"2"_s);
}

void TestDiffTransfer::anImportedSubIndexReplacesTheOwnOne()
{
    QVERIFY(transfer().importSubIndex(0x2000, 1));
    ObjectDataBase::SUBINDEX_DATA_T expected;
    QVERIFY(m_other->getSubIndex(0, 0x2000, 1, expected));
    QCOMPARE(ownSub(0x2000, 1), expected);
    QCOMPARE(m_current->getIndexName(0, 0x2000), u"Mine"_s);
    QCOMPARE(m_current->getSubIndexList(0, 0x2000), QList<quint8>({0, 1, 2}));
}

void TestDiffTransfer::afterAnApplyTheOwnValuesStay()
{
    QVERIFY(transfer(true).importSubIndex(0x2000, 1));
    const auto data = ownSub(0x2000, 1);
    QCOMPARE(data.name, u"yours"_s);
    QCOMPARE(data.uplimit, u"99"_s);
    QCOMPARE(data.defaultvalue, u"1"_s);
    QCOMPARE(data.currentvalue, u"10"_s);
}

void TestDiffTransfer::theCompleteImportTakesTheValuesToo()
{
    QVERIFY(transfer(true).importSubIndexComplete(0x2000, 1));
    const auto data = ownSub(0x2000, 1);
    QCOMPARE(data.defaultvalue, u"2"_s);
    QCOMPARE(data.currentvalue, u"20"_s);
}

void TestDiffTransfer::aNewSubIndexKeepsItsValuesAfterAnApply()
{
    QVERIFY(m_other->addSubIndex(0, 0x2000, 9, sub(u"new"_s, u"7"_s)));
    QVERIFY(transfer(true).importSubIndex(0x2000, 9));
    QCOMPARE(ownSub(0x2000, 9), sub(u"new"_s, u"7"_s));
}

void TestDiffTransfer::aSubIndexBringsItsObjectWhereThatIsMissing()
{
    QVERIFY(addObject(*m_other, 0x2001, u"New"_s, 3));
    QVERIFY(transfer().importSubIndex(0x2001, 2));
    QCOMPARE(m_current->getIndexName(0, 0x2001), u"New"_s);
    QCOMPARE(m_current->getSubIndexList(0, 0x2001), QList<quint8>{2});
}

void TestDiffTransfer::whatTheOtherProjectLacksCannotBeImported()
{
    QVERIFY(!transfer().importObject(0x3000));
    QVERIFY(!transfer().importSubIndex(0x2000, 2));
    QCOMPARE(m_current->getSubIndexList(0, 0x2000), QList<quint8>({0, 1, 2}));
}

void TestDiffTransfer::objectsAndSubIndicesAreRemoved()
{
    QVERIFY(transfer().removeSubIndex(0x2000, 2));
    QCOMPARE(m_current->getSubIndexList(0, 0x2000), QList<quint8>({0, 1}));
    QVERIFY(transfer().removeObject(0x2000));
    QVERIFY(!m_current->indexExists(0, 0x2000));
    QVERIFY(m_current->getSubIndexList(0, 0x2000).isEmpty());
    QVERIFY(m_other->indexExists(0, 0x2000));
}

void TestDiffTransfer::aSettingIsTakenOver()
{
    QVERIFY(m_current->setGeneralSetting(u"key"_s, u"mine"_s));
    QVERIFY(m_other->setGeneralSetting(u"key"_s, u"yours"_s));
    QVERIFY(transfer().takeOverGeneralSetting(u"key"_s));
    QCOMPARE(m_current->getGeneralSetting(u"key"_s), u"yours"_s);
}

void TestDiffTransfer::aLockedProjectRefusesEverything()
{
    m_current->setWriteLock(true);
    QVERIFY(!transfer().importObject(0x2000));
    QVERIFY(!transfer().importSubIndex(0x2000, 1));
    QVERIFY(!transfer().removeObject(0x2000));
    QVERIFY(!transfer().takeOverGeneralSetting(u"key"_s));
    m_current->setWriteLock(false);
    QCOMPARE(m_current->getIndexName(0, 0x2000), u"Mine"_s);
    QCOMPARE(ownSub(0x2000, 1).name, u"mine"_s);
}

QTEST_GUILESS_MAIN(TestDiffTransfer)
#include "tst_difftransfer.moc"
