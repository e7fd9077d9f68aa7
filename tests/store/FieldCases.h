#pragma once

#include "StoreTest.h"

#include <functional>

/** Every column of the row types, so that one test can go over all of them. */
namespace FieldCases {

struct FieldCase
{
    QByteArray name; ///< table and column
    bool isText = false;
    bool isPooled = false;
    QVariant sample; ///< a value that differs from the default
    std::function<bool(ObjectDataBase &, const QVariant &)> write;
    std::function<QVariant(ObjectDataBase &)> read;
    QString select; ///< the column as it stands in the file
};

/** All columns with a field in a record, `metadata` and the identifying columns aside. */
const QList<FieldCase> &all();

} // namespace FieldCases
