#include "generators/canopen/StackInitTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Pointer
{
    const char *key;
    const char *text;
};

constexpr Pointer pointers[] = {
    {"fct_sdo_server_read", "CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerReadInd ="},
    {"fct_sdo_server_write", "CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerWriteInd ="},
    {"fct_pdo", "CORE_CONST CO_EVENT_PDO_T coEventPdoInd ="},
    {"fct_pdo_update", "CORE_CONST CO_EVENT_PDO_UPDATE_T coEventPdoUpdateInd ="},
    {"fct_nmt", "CORE_CONST CO_EVENT_NMT_T coEventNmtInd ="},
    {"fct_errctrl", "CORE_CONST CO_EVENT_ERRCTRL_T coEventErrCtrlInd ="},
    {"fct_sync", "CORE_CONST CO_EVENT_SYNC_T coEventSyncInd ="},
    {"fct_sync_finished", "CORE_CONST CO_EVENT_SYNC_FINISHED_T coEventSyncFinishedInd ="},
    {"fct_led_green", "CORE_CONST CO_EVENT_LED_T coEventLedGreenInd ="},
    {"fct_led_red", "CORE_CONST CO_EVENT_LED_T coEventLedRedInd ="},
    {"fct_can", "CORE_CONST CORE_EVENT_CAN_STATE_T coreEventCanStateInd ="},
    {"fct_cfgman", "CORE_CONST CO_EVENT_CFG_MANAGER_T coEventCfgManInd ="},
    {"fct_flyma", "CORE_CONST CO_EVENT_FLYMA_T coEventFlymaInd ="},
    {"fct_sdo_client_read", "CORE_CONST CO_EVENT_SDO_CLIENT_READ_T coEventSdoClientReadInd ="},
    {"fct_sdo_client_write", "CORE_CONST CO_EVENT_SDO_CLIENT_WRITE_T coEventSdoClientWriteInd ="},
    {"fct_emcy", "CORE_CONST CO_EVENT_EMCY_T coEventEmcyInd ="},
    {"fct_emcy_consumer", "CORE_CONST CO_EVENT_EMCY_CONSUMER_T coEventEmcyConsumerInd ="},
    {"fct_time", "CORE_CONST CO_EVENT_TIME_T coEventTimeInd ="},
    {"fct_store", "CORE_CONST CO_EVENT_STORE_T coEventStoreLoadInd ="},
    {"fct_store_clear", "CORE_CONST CO_EVENT_STORE_T coEventStoreClearInd ="},
    {"fct_store_save", "CORE_CONST CO_EVENT_STORE_T coEventStoreSaveInd ="},
    {"fct_lss", "CORE_CONST CO_EVENT_LSS_T coEventLssInd ="},
    {"fct_lss_master", "CORE_CONST CO_EVENT_LSS_MASTER_T coEventLssMasterInd ="},
    {"fct_comm", "CORE_CONST CORE_EVENT_COMM_T coreEventCommInd ="},
    {"fct_manager", "CORE_CONST CO_EVENT_MANAGER_BOOTUP_T coEventManagerInd ="},
    {"fct_mpdo", "CORE_CONST CO_EVENT_MPDO_T coEventMPdoInd ="},
};

constexpr Pointer serverPointers[] = {
    {"usdo_server_read_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerReadInd ="},
    {"usdo_server_write_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerWriteInd ="},
    {"usdo_server_domain_read_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_READ_T coEventUsdoServerDomainReadInd ="},
    {"usdo_server_domain_write_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_WRITE_T coEventUsdoServerDomainWriteInd ="},
};

constexpr Pointer clientPointers[] = {
    {"usdo_client_read_ind_function", "CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientReadInd ="},
    {"usdo_client_write_ind_function", "CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientWriteInd ="},
    {"usdo_client_domain_read_ind_function",
     "CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainReadInd ="},
    {"usdo_client_domain_write_ind_function",
     "CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainWriteInd ="},
};

/** The definitions of the pointers, one after the other. */
QString indications(const QString &text)
{
    return StackInitTexts::between(text, u"/* definition of static indication function pointers */\n"_s,
                                   u"\n/* number of objects */\n"_s);
}

template <std::size_t size>
void nameAll(DictionaryDesk &desk, const Pointer (&table)[size])
{
    for (const Pointer &pointer : table)
        desk.set(QString::fromLatin1(pointer.key), u"my_"_s + QLatin1StringView(pointer.key));
}

template <std::size_t size>
QString expected(const Pointer (&table)[size])
{
    QString text;
    for (const Pointer &pointer : table)
        text += QLatin1StringView(pointer.text) + u"my_"_s + QLatin1StringView(pointer.key) + u";\n"_s;
    return text;
}

/** A device that runs CAN FD on its line and names every function that there is. */
void makeFdDevice(DictionaryDesk &desk, const QString &lineType)
{
    desk.set(u"line0type"_s, lineType);
    desk.set(u"canfd_supported"_s, u"1"_s);
    nameAll(desk, serverPointers);
    nameAll(desk, clientPointers);
}

} // namespace

/** The pointers to indication functions that are fixed at compile time. */
class TestStackInitIndications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void withoutNamesOnlyTheCommentIsWritten();
    void aNamedFunctionHasItsPointer_data();
    void aNamedFunctionHasItsPointer();
    void pointersKeepTheOrderOfTheTable();
    void blanksAreNoName();
    void theOlderStackHasItsWords();
    void usdoPointersFollowOnCanFd();
    void usdoPointersNeedTheService_data();
    void usdoPointersNeedTheService();
    void usdoPointersNeedACanopenFdLine_data();
    void usdoPointersNeedACanopenFdLine();
    void anyLineWithTheServiceGivesThePointers();
    void aJ1939ServerHasNoPointers();
};

void TestStackInitIndications::withoutNamesOnlyTheCommentIsWritten()
{
    DictionaryDesk desk;
    QCOMPARE(indications(desk.generate()), QString());
}

void TestStackInitIndications::aNamedFunctionHasItsPointer_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    for (const Pointer &pointer : pointers)
        QTest::newRow(pointer.key) << QString::fromLatin1(pointer.key) << QString::fromLatin1(pointer.text);
}

void TestStackInitIndications::aNamedFunctionHasItsPointer()
{
    QFETCH(QString, key);
    QFETCH(QString, text);
    DictionaryDesk desk;
    desk.set(key, u"pumpEvent"_s);
    QCOMPARE(indications(desk.generate()), QString(text + u"pumpEvent;\n"_s));
}

void TestStackInitIndications::pointersKeepTheOrderOfTheTable()
{
    DictionaryDesk desk;
    nameAll(desk, pointers);
    QCOMPARE(indications(desk.generate()), expected(pointers));
}

void TestStackInitIndications::blanksAreNoName()
{
    DictionaryDesk desk;
    desk.set(u"fct_nmt"_s, u"  "_s);
    desk.set(u"fct_sync"_s, u" onSync "_s);
    QCOMPARE(indications(desk.generate()), u"CORE_CONST CO_EVENT_SYNC_T coEventSyncInd =onSync;\n"_s);
}

void TestStackInitIndications::theOlderStackHasItsWords()
{
    DictionaryDesk desk;
    desk.set(u"fct_nmt"_s, u"onNmt"_s);
    desk.set(u"fct_can"_s, u"onCan"_s);
    QCOMPARE(indications(desk.generate(false)),
             u"CO_CONST CO_EVENT_NMT_T coEventNmtInd =onNmt;\n"
             "CO_CONST CO_EVENT_CAN_STATE_T coreEventCanStateInd =onCan;\n"_s);
}

void TestStackInitIndications::usdoPointersFollowOnCanFd()
{
    DictionaryDesk desk;
    makeFdDevice(desk, u"1"_s);
    nameAll(desk, pointers);
    desk.set(u"usdo_server_enabled"_s, u"1"_s);
    desk.set(u"usdo_client_enabled"_s, u"1"_s);
    QCOMPARE(indications(desk.generate()),
             QString(expected(pointers) + expected(serverPointers) + expected(clientPointers)));
}

void TestStackInitIndications::usdoPointersNeedTheService_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("text");
    QTest::newRow("neither") << u"0"_s << u""_s << QString();
    QTest::newRow("server") << u"1"_s << u"0"_s << expected(serverPointers);
    QTest::newRow("client") << u"0"_s << u"1"_s << expected(clientPointers);
}

void TestStackInitIndications::usdoPointersNeedTheService()
{
    QFETCH(QString, server);
    QFETCH(QString, client);
    DictionaryDesk desk;
    makeFdDevice(desk, u"1"_s);
    desk.set(u"usdo_server_enabled"_s, server);
    desk.set(u"usdo_client_enabled"_s, client);
    QTEST(indications(desk.generate()), "text");
}

void TestStackInitIndications::usdoPointersNeedACanopenFdLine_data()
{
    QTest::addColumn<QString>("lineType");
    QTest::addColumn<QString>("canFd");
    QTest::addColumn<bool>("hasPointers");
    QTest::newRow("CANopen") << u"1"_s << u"1"_s << true;
    QTest::newRow("CANopen and J1939") << u"5"_s << u"1"_s << true;
    QTest::newRow("CANopen and raw CAN") << u"6"_s << u"1"_s << true;
    QTest::newRow("raw CAN") << u"4"_s << u"1"_s << false;
    QTest::newRow("J1939") << u"2"_s << u"1"_s << false;
    QTest::newRow("classical CAN") << u"1"_s << u"0"_s << false;
}

void TestStackInitIndications::usdoPointersNeedACanopenFdLine()
{
    QFETCH(QString, lineType);
    QFETCH(QString, canFd);
    QFETCH(bool, hasPointers);
    DictionaryDesk desk;
    makeFdDevice(desk, lineType);
    desk.set(u"canfd_supported"_s, canFd);
    desk.set(u"usdo_server_enabled"_s, u"1"_s);
    QCOMPARE(indications(desk.generate()), hasPointers ? expected(serverPointers) : QString());
}

void TestStackInitIndications::anyLineWithTheServiceGivesThePointers()
{
    DictionaryDesk desk;
    makeFdDevice(desk, u"1"_s);
    desk.addLine(1);
    desk.set(u"line1type"_s, u"1"_s);
    desk.set(u"usdo_client_enabled"_s, u"0,1"_s);
    QCOMPARE(indications(desk.generate()), expected(clientPointers));
    desk.set(u"line1type"_s, u"2"_s);
    QCOMPARE(indications(desk.generate()), QString());
}

void TestStackInitIndications::aJ1939ServerHasNoPointers()
{
    DictionaryDesk desk;
    desk.forJ1939Server = true;
    nameAll(desk, pointers);
    QCOMPARE(indications(desk.generate()), QString());
}

QTEST_GUILESS_MAIN(TestStackInitIndications)
#include "tst_stackinitindications.moc"
