#include "canopen/EdsNumber.h"

#include <QString>

std::optional<quint64> edsNumber(QStringView text)
{
    const QStringView number = text.trimmed();
    // Only plain digits: QStringView::toULongLong would also take signs and blanks.
    if (number.isEmpty() || number.front() < u'0' || number.front() > u'9')
        return {};
    bool ok = false;
    quint64 result = number.toULongLong(&ok, 0);
    if (!ok)
        result = number.toULongLong(&ok, 10);
    return ok ? std::optional(result) : std::nullopt;
}
