#pragma once

#include "store/Schema.h"

#include <type_traits>
#include <utility>

/** The fields of a record one after the other, each with what the compiler knows of its column. */
namespace RowFields {

/** Fields in front of a column; the keys of a table are none. */
template <typename Row>
constexpr size_t countBefore(size_t column)
{
    size_t count = 0;
    for (size_t i = 0; i < column; ++i)
        count += Schema::Table<Row>::columns[i].storage == Schema::Storage::Key ? 0 : 1;
    return count;
}

template <typename Row>
inline constexpr size_t count = countBefore<Row>(Schema::Table<Row>::columns.size());

template <typename Row, size_t Column>
struct Field
{
    static constexpr Schema::Member<Row> members = Schema::Table<Row>::columns[Column].member;
    static constexpr auto member = std::get<members.index()>(members);
    static constexpr Schema::Storage storage = Schema::Table<Row>::columns[Column].storage;
    static constexpr int number = int(countBefore<Row>(Column)); ///< as statements order the fields
    using Type = std::remove_cvref_t<decltype(std::declval<Row &>().*member)>;
};

template <size_t Column, typename Row, typename Action>
void call(const Action &action)
{
    if constexpr (Schema::Table<Row>::columns[Column].storage != Schema::Storage::Key)
        action(Field<Row, Column>());
}

template <typename Row, typename Action, size_t... Columns>
void callEach(const Action &action, std::index_sequence<Columns...>)
{
    (call<Columns, Row>(action), ...);
}

/** Calls the action with the Field of every column that is no key, in the order of the table. */
template <typename Row, typename Action>
void forEach(const Action &action)
{
    callEach<Row>(action, std::make_index_sequence<Schema::Table<Row>::columns.size()>());
}

/** A field that a table holds as a number. */
template <typename Type>
Type fromNumber(qint64 number)
{
    if constexpr (std::is_same_v<Type, bool>)
        return number != 0;
    else if constexpr (std::is_same_v<Type, PDOMapping>)
        return PDOMapping(quint8(number));
    else
        return static_cast<Type>(number);
}

} // namespace RowFields
