// Statements that the tables of messages and signals share.

#include "store/ObjectDataBaseMessages.h"

QList<quint32> ObjectDataBase::Private::numberList(const char *sql, quint8 line,
                                                   std::initializer_list<qint64> values,
                                                   const char *operation)
{
    QList<quint32> numbers;
    StoreQuery query(connection, sql, line, operation);
    for (const qint64 value : values)
        query.bind(value);
    while (query.next())
        numbers.append(quint32(query.number(0)));
    return numbers;
}

QString ObjectDataBase::Private::pooledName(const char *sql, quint8 line,
                                            std::initializer_list<qint64> values, const char *operation)
{
    StoreQuery query(connection, sql, line, operation);
    for (const qint64 value : values)
        query.bind(value);
    return query.next() ? q->getString(int(query.number(0))) : QString();
}

bool ObjectDataBase::Private::change(const char *sql, quint8 line, std::initializer_list<qint64> values,
                                     const char *operation)
{
    StoreQuery query(connection, sql, line, operation);
    for (const qint64 value : values)
        query.bind(value);
    return query.exec();
}
