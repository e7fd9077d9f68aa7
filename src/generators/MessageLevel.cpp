#include "generators/MessageLevel.h"

#include <QStringView>

#include <algorithm>

namespace {

enum class Position { Head, Tail };

struct Mark
{
    QStringView text;
    Position position;
    MessageLevel level;
};

constexpr Mark marks[] = {
    // The model check
    {u"<strong>Error: </strong>", Position::Head, MessageLevel::Error},
    {u"<strong><font color='red'>Error: </font></strong>", Position::Head, MessageLevel::Error},
    {u"Warning: ", Position::Head, MessageLevel::Warning},
    {u"<strong>Warning: ", Position::Head, MessageLevel::Warning},
    {u"<strong>Warning</strong>: ", Position::Head, MessageLevel::Warning},
    {u"<strong>Hint: </strong>", Position::Head, MessageLevel::Hint},
    {u"<i>Corrected: ", Position::Head, MessageLevel::Correction},
    // The run
    {u"ABORT - ", Position::Head, MessageLevel::Error},
    {u"<b>ERROR - ", Position::Head, MessageLevel::Error},
    {u" not writable", Position::Tail, MessageLevel::Error},
    {u"Start of EDS Checker failed", Position::Head, MessageLevel::Error},
    {u"Warning line type not set", Position::Head, MessageLevel::Warning},
    {u"<b>Warning: ", Position::Head, MessageLevel::Warning},
};

} // namespace

MessageLevel messageLevel(const QString &richText)
{
    const QStringView text = QStringView(richText).trimmed();
    const auto *const mark = std::find_if(std::begin(marks), std::end(marks), [text](const Mark &m) {
        return m.position == Position::Head ? text.startsWith(m.text) : text.endsWith(m.text);
    });
    return mark == std::end(marks) ? MessageLevel::Info : mark->level;
}
