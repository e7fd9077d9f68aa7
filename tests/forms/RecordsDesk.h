#pragma once

#include "forms/FormTest.h"

#include <QLabel>
#include <QTableView>
#include <QTest>

/** What a user sees on a page of records. */
namespace RecordsDesk {

inline QAbstractItemModel &recordsOf(const QWidget &form)
{
    return *form.findChild<QTableView *>(QStringLiteral("tvRecords"))->model();
}

inline QAbstractItemModel &partsOf(const QWidget &form)
{
    return *form.findChild<QTableView *>(QStringLiteral("tvParts"))->model();
}

inline QString labelText(const QWidget &form, const QString &name)
{
    return form.findChild<QLabel *>(name)->text();
}

inline QString selectedText(const QWidget &form, const QString &view)
{
    return form.findChild<QTableView *>(view)->currentIndex().siblingAtColumn(0).data().toString();
}

} // namespace RecordsDesk
