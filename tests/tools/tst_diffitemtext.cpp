#include "store/ObjectDataBase.h"
#include "tools/DiffItemText.h"

#include <QTest>

using namespace Qt::StringLiterals;
using DiffItemText::Action;
using DiffItemText::Actions;
using DiffItemText::Part;
using ProjectDiff::Item;
using ProjectDiff::State;

class TestDiffItemText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStateHasItsText_data();
    void everyStateHasItsText();
    void theStateIsReadBackFromTheText_data();
    void theStateIsReadBackFromTheText();
    void aNameThatEndsLikeAStateIsNone_data();
    void aNameThatEndsLikeAStateIsNone();
    void onlyTheTextBeforeTheFirstBlankIsTheNumber_data();
    void onlyTheTextBeforeTheFirstBlankIsTheNumber();
    void theStateDecidesTheActions_data();
    void theStateDecidesTheActions();
};

void TestDiffItemText::everyStateHasItsText_data()
{
    QTest::addColumn<Part>("part");
    QTest::addColumn<State>("state");
    QTest::addColumn<bool>("isAfterApply");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString &text, Part part, State state, bool isAfterApply,
                        const QString &name = u"a name"_s) {
        QTest::newRow(qPrintable(text + (isAfterApply ? " (apply)"_L1 : ""_L1)))
            << part << state << isAfterApply << name << text;
    };
    row(u"0x1abc - a name"_s, Part::Object, State::Equal, false);
    row(u"0x1abc - a name - different"_s, Part::Object, State::Different, false);
    row(u"0x1abc - a name - current"_s, Part::Object, State::OnlyCurrent, false);
    row(u"0x1abc - a name - other"_s, Part::Object, State::OnlyOther, false);
    row(u"0x1abc - a name"_s, Part::Object, State::Equal, true);
    row(u"0x1abc - a name - different"_s, Part::Object, State::Different, true);
    row(u"0x1abc - a name - to be removed"_s, Part::Object, State::OnlyCurrent, true);
    row(u"0x1abc - a name - to be added"_s, Part::Object, State::OnlyOther, true);
    row(u"0x1abc - unnamed object - other"_s, Part::Object, State::OnlyOther, false, QString());
    row(u"6844 - a name"_s, Part::SubIndex, State::Equal, false);
    row(u"6844 - a name - different"_s, Part::SubIndex, State::Different, false);
    row(u"6844 - a name - current"_s, Part::SubIndex, State::OnlyCurrent, false);
    row(u"6844 - a name - other"_s, Part::SubIndex, State::OnlyOther, false);
    row(u"6844 - a name - to be removed"_s, Part::SubIndex, State::OnlyCurrent, true);
    row(u"6844 - a name - to be added"_s, Part::SubIndex, State::OnlyOther, true);
    row(u"6844 - unnamed subindex - current"_s, Part::SubIndex, State::OnlyCurrent, false, QString());
    row(u"0x1abc - a name Transmit"_s, Part::Pgn, State::Equal, false);
    row(u"0x1abc - a name Transmit - different"_s, Part::Pgn, State::Different, false);
    row(u"0x1abc - a name Transmit - current"_s, Part::Pgn, State::OnlyCurrent, false);
    row(u"0x1abc - a name Transmit - other"_s, Part::Pgn, State::OnlyOther, false);
    row(u"0x1abc - a message Transmit - other"_s, Part::CanId, State::OnlyOther, false, u"a message"_s);
    row(u"0x1abc - unnamed CAN-ID Transmit"_s, Part::CanId, State::Equal, false, QString());
    row(u"6844 - a signal - current"_s, Part::Spn, State::OnlyCurrent, false, u"a signal"_s);
    row(u"6844 - an element - different"_s, Part::DataElement, State::Different, false, u"an element"_s);
}

void TestDiffItemText::everyStateHasItsText()
{
    QFETCH(const Part, part);
    QFETCH(const State, state);
    QFETCH(const bool, isAfterApply);
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    const Item item{.number = 0x1abc,
                    .direction = ObjectDataBase::Transmit,
                    .name = name,
                    .state = state,
                    .children = {}};
    QCOMPARE(DiffItemText::text(part, item, isAfterApply), text);
}

void TestDiffItemText::theStateIsReadBackFromTheText_data()
{
    QTest::addColumn<State>("state");
    QTest::addColumn<bool>("isAfterApply");
    for (const bool isAfterApply : {false, true}) {
        const char *mode = isAfterApply ? "after an apply" : "else";
        QTest::addRow("equal, %s", mode) << State::Equal << isAfterApply;
        QTest::addRow("different, %s", mode) << State::Different << isAfterApply;
        QTest::addRow("current, %s", mode) << State::OnlyCurrent << isAfterApply;
        QTest::addRow("other, %s", mode) << State::OnlyOther << isAfterApply;
    }
}

void TestDiffItemText::theStateIsReadBackFromTheText()
{
    QFETCH(const State, state);
    QFETCH(const bool, isAfterApply);
    const Item item{.number = 0x2000, .name = u"0x30 - a - b"_s, .state = state, .children = {}};
    for (const Part part : {Part::Object, Part::SubIndex})
        QCOMPARE(DiffItemText::state(DiffItemText::text(part, item, isAfterApply)), state);
}

void TestDiffItemText::aNameThatEndsLikeAStateIsNone_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"Motor rated current", "Max current", "current", "the other", "added",
                             "to be removed", "different"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestDiffItemText::aNameThatEndsLikeAStateIsNone()
{
    QFETCH(const QString, name);
    // An object that only holds a differing sub-index: nobody must be offered to delete it.
    const QString text = DiffItemText::text(
        Part::Object, {.number = 0x6075, .name = u"X "_s + name, .state = State::Equal, .children = {}});
    QCOMPARE(DiffItemText::state(text), State::Equal);
    QCOMPARE(DiffItemText::actions(text), Actions());
}

void TestDiffItemText::onlyTheTextBeforeTheFirstBlankIsTheNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number"); // -1: none
    QTest::addColumn<bool>("isParent");
    QTest::newRow("object") << u"0x1018 - Identity object"_s << 0x1018 << true;
    QTest::newRow("blanks and digits") << u"0x2000 - 17 and 0x18 - 19 - different"_s << 0x2000 << true;
    QTest::newRow("sub-index") << u"10 - Sub 7 - other"_s << 10 << false;
    QTest::newRow("leading zero is decimal") << u"010 - Sub"_s << 10 << false;
    QTest::newRow("long CAN-ID") << u"0x1ffffff0 - Name Receive"_s << 0x1ffffff0 << true;
    QTest::newRow("title") << u"Transmit PGNs"_s << -1 << false;
    QTest::newRow("empty") << QString() << -1 << false;
}

void TestDiffItemText::onlyTheTextBeforeTheFirstBlankIsTheNumber()
{
    QFETCH(const QString, text);
    QFETCH(const int, number);
    QFETCH(const bool, isParent);
    const auto read = DiffItemText::number(text);
    QCOMPARE(read ? int(*read) : -1, number);
    QCOMPARE(DiffItemText::isParent(text), isParent);
}

void TestDiffItemText::theStateDecidesTheActions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("actions");
    QTest::newRow("equal") << u"0x2000 - a"_s << 0;
    QTest::newRow("other object") << u"0x2000 - a - other"_s << int(Action::Import);
    QTest::newRow("added object") << u"0x2000 - a - to be added"_s << int(Action::Import);
    QTest::newRow("current object") << u"0x2000 - a - current"_s << int(Action::Delete);
    QTest::newRow("removed object") << u"0x2000 - a - to be removed"_s << int(Action::Delete);
    QTest::newRow("different object")
        << u"0x2000 - a - different"_s << (int(Action::Import) | int(Action::ImportComplete));
    QTest::newRow("other sub") << u"1 - a - other"_s << int(Action::Import);
    QTest::newRow("current sub") << u"1 - a - current"_s << int(Action::Delete);
    QTest::newRow("different sub") << u"1 - a - different"_s << int(Action::Import);
}

void TestDiffItemText::theStateDecidesTheActions()
{
    QFETCH(const QString, text);
    QFETCH(const int, actions);
    QCOMPARE(DiffItemText::actions(text), Actions(actions));
}

QTEST_GUILESS_MAIN(TestDiffItemText)
#include "tst_diffitemtext.moc"
