#include "generators/documents/CSVGenerator.h"
#include "generators/documents/DocumentDesk.h"
#include "generators/documents/HTMLGenerator.h"
#include "generators/documents/ICSVGenerator.h"
#include "generators/documents/TextDocGenerator.h"

#include <QSemaphore>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

constexpr int giveUpMs = 10000; // then a hang is a failure

/** A generator that waits behind every object until the test lets it go on. */
template <typename Generator>
class Halting : public Generator
{
public:
    using Generator::Generator;

    bool waitForObject() { return m_written.tryAcquire(1, giveUpMs); }
    void goOn() { m_open.release(); }

protected:
    void writeObject(CodeWriter &out, const ListedObject &object) const override
    {
        Generator::writeObject(out, object);
        m_written.release();
        m_open.tryAcquire(1, giveUpMs);
    }

private:
    mutable QSemaphore m_written;
    mutable QSemaphore m_open;
};

/** Stops the run behind the second of three objects; the text of the file that it leaves. */
template <typename Generator, typename... Arguments>
QString stopped(const QString &fileName, Arguments... arguments)
{
    DocumentDesk desk;
    for (const quint16 index : {0x2001, 0x2002, 0x2003})
        desk.object(index, {.name = u"Object"_s, .objecttype = CANopen::Array}, {{.name = u"Value"_s}});
    Halting<Generator> generator(arguments...);
    generator.setDatabase(&desk.store);
    generator.setOutputDir(desk.folder.path());
    generator.setProjectName(u"Pump"_s);
    QSignalSpy progress(&generator, &AbstractGenerator::progress);
    QTest::ignoreMessage(QtDebugMsg, "Generation aborted");
    bool isAsTold = generator.startGeneration() == GeneratorStatus::Success && generator.waitForObject();
    generator.goOn();
    isAsTold = isAsTold && generator.waitForObject() && generator.requestStop() == GeneratorStatus::Success;
    generator.goOn();
    generator.waitForEnd();
    isAsTold = isAsTold && !generator.isFailed() && progress.size() == 1
        && progress.at(0).at(0).toInt() == 100 && generator.requestStop() == GeneratorStatus::NotRunning;
    return isAsTold ? desk.read(fileName) : u"the run went another way"_s;
}

} // namespace

/** A stop of a document's generation: it is told, and the file stays as it stands. */
class TestDocumentsStop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theTextEndsAtTheNextObject();
    void theHtmlEndsAtTheNextObject();
    void theCsvEndsAtTheNextObject();
    void theIcsvEndsAtTheNextObject();
};

void TestDocumentsStop::theTextEndsAtTheNextObject()
{
    const QString text = stopped<TextDocGenerator>(u"Pump_doc.txt"_s);
    QVERIFY2(text.startsWith("CANopen Object Dictionary Documenation for Pump\n"_L1), qPrintable(text));
    QCOMPARE(text.count("Index:"_L1), 2);
    QCOMPARE(text.count("Sub:"_L1), 2);
    QVERIFY(text.contains("Index:       0x2002 "_L1));
}

void TestDocumentsStop::theHtmlEndsAtTheNextObject()
{
    const QString text = stopped<HTMLGenerator>(u"Pump.html"_s);
    QCOMPARE(text.count("Object: 0x"_L1), 2);
    QVERIFY(text.endsWith("</table>\n"_L1));
}

void TestDocumentsStop::theCsvEndsAtTheNextObject()
{
    const QString text = stopped<CSVGenerator>(u"Pump.csv"_s);
    QCOMPARE(text.count(u'\n'), 3);
    QVERIFY(text.contains("\n0x2002,0,"_L1));
}

void TestDocumentsStop::theIcsvEndsAtTheNextObject()
{
    const QString text = stopped<ICSVGenerator>(u"Pump.icsv"_s, false);
    QCOMPARE(text.count(u'\n'), 6);
    QVERIFY(text.contains("\n0x2002,0,"_L1));
}

QTEST_GUILESS_MAIN(TestDocumentsStop)
#include "tst_documentsstop.moc"
