#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/canopen/ObjDictGenerator.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/** A sub-index in the words of a test; what is not named has the value of a plain parameter. */
struct Entry
{
    int type = CAN::Unsigned8;
    QString value = QStringLiteral("0");
    int implementation = CANopen::ManagedVariable;
    QString access = QStringLiteral("rw");
    QString variable = {};
    QString low = {};
    QString up = {};
    bool limits = false;
    bool defaultInEds = false;
    bool shared = false;
    bool stored = false;
    PDOMapping mapping = PDOMapping::Forbidden;
    int size = 0;

    ObjectDataBase::SUBINDEX_DATA_T data() const
    {
        ObjectDataBase::SUBINDEX_DATA_T sub;
        sub.datatype = type;
        sub.defaultvalue = value;
        sub.implementation = implementation;
        sub.accesstype = access;
        sub.varname = variable;
        sub.lowlimit = low;
        sub.uplimit = up;
        sub.limitineds = limits;
        sub.defaultineds = defaultInEds;
        sub.sharedlines = shared;
        sub.nvstorage = stored;
        sub.pdomapping = mapping;
        sub.size = size;
        return sub;
    }
};

/** One number of every type that a value table has. */
inline QList<Entry> everyNumber(int implementation = CANopen::ManagedVariable)
{
    QList<Entry> entries;
    for (const int type : {CAN::Boolean, CAN::Integer8, CAN::Integer16, CAN::Integer32, CAN::Unsigned8,
                           CAN::Unsigned16, CAN::Unsigned32, CAN::Real32, CAN::Integer24, CAN::Unsigned24,
                           CAN::Unsigned40, CAN::Unsigned48, CAN::Unsigned64, CAN::TimeOfDay, CAN::Unsigned5})
        entries.append({.type = type,
                        .value = QStringLiteral("1"),
                        .implementation = implementation,
                        .variable = QStringLiteral("v%1").arg(type)});
    return entries;
}

/** A project in memory, the folder that it is generated into, and the text that comes out. */
class DictionaryDesk
{
public:
    DictionaryDesk() : folder(QDir::temp().filePath(QStringLiteral("dictionary-XXXXXX"))) { }

    /** Adds an object, and its line where the project lacks that. */
    void object(quint16 index, const QList<Entry> &subs, int code = CANopen::Record, quint8 line = 0)
    {
        addLine(line);
        object(index, code, line);
        for (int i = 0; i < subs.size(); ++i)
            sub(index, quint8(i), subs.at(i), line);
    }
    void object(quint16 index, int code, quint8 line = 0)
    {
        ObjectDataBase::INDEX_DATA_T data;
        data.objecttype = code;
        require(store.addIndex(line, index, data));
    }
    /** Adds an object of one value. */
    void variable(quint16 index, const Entry &entry, quint8 line = 0)
    {
        object(index, QList<Entry>{entry}, CANopen::Var, line);
    }
    void sub(quint16 index, quint8 number, const Entry &entry, quint8 line = 0)
    {
        require(store.addSubIndex(line, index, number, entry.data()));
    }
    /** Adds an object whose sub-index 0 tells the number of the others. */
    void array(quint16 index, const QList<Entry> &elements, quint8 line = 0)
    {
        QList<Entry> subs{{.value = QString::number(elements.size()),
                           .implementation = CANopen::ManagedConst,
                           .access = QStringLiteral("const")}};
        object(index, subs + elements, CANopen::Array, line);
    }
    /** Adds communication and mapping object of a PDO; an access of "rw" makes the mapping a dynamic one. */
    void pdo(quint16 index, const QStringList &mapped, const QString &access = QStringLiteral("const"),
             quint8 line = 0, const QString &count = {})
    {
        array(index, {{.type = CAN::Unsigned32, .value = QStringLiteral("$NODEID+0x180")}, {}}, line);
        const int implementation =
            access == QLatin1StringView("const") ? CANopen::ManagedConst : CANopen::ManagedVariable;
        QList<Entry> subs{{.value = count.isNull() ? QString::number(mapped.size()) : count,
                           .implementation = implementation,
                           .access = access}};
        for (const QString &entry : mapped)
            subs.append({.type = CAN::Unsigned32,
                         .value = entry,
                         .implementation = implementation,
                         .access = access});
        constexpr quint16 mappingOffset = 0x200;
        object(quint16(index + mappingOffset), subs, CANopen::Record, line);
    }

    void set(const QString &key, const QString &value) { require(store.setGeneralSetting(key, value)); }
    void setMisc(const QString &key, const QString &value) { require(store.setMiscSetting(key, value)); }
    void addLine(quint8 line)
    {
        if (!store.nodeExists(line))
            require(store.addNode(line, {}));
    }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QString read(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("no file");
    }
    bool exists(const QString &name) const { return QFile::exists(folder.filePath(name)); }

    /** Runs the generator for the V4 stack, or for the older one; the text of gen_objdict.c. */
    QString generate(bool v4 = true)
    {
        if (v4) {
            ObjDictGeneratorV4 generator(compactArrays);
            return run(generator);
        }
        ObjDictGenerator generator(compactArrays);
        return run(generator);
    }
    QString run(ObjectDictionaryGenerator &generator)
    {
        generator.setForJ1939Server(forJ1939Server);
        generator.setDatabase(&store);
        generator.setOutputDir(folder.path());
        generator.setProjectName(QStringLiteral("Pump"));
        require(generator.startGeneration() == GeneratorStatus::Success);
        generator.waitForEnd();
        error = generator.errorString();
        return read(QStringLiteral("gen_objdict.c"));
    }

    StoreTest::NewStore store;
    QTemporaryDir folder;
    bool compactArrays = false;
    bool forJ1939Server = false;
    QString error; ///< of the last run

private:
    static void require(bool done)
    {
        if (!done)
            qFatal("the project could not be made");
    }
};

/** Looks into a generated file. */
namespace Generated {

/** From the first line with the text up to the line "};", that included; empty without it. */
inline QString definition(const QString &text, const QString &head)
{
    const qsizetype found = text.indexOf(head);
    const qsizetype end = text.indexOf(QStringLiteral("};\n"), found);
    if (found < 0 || end < 0)
        return {};
    const qsizetype line = text.lastIndexOf(u'\n', found) + 1;
    return text.sliced(line, end + 3 - line);
}

/** The lines of a definition between its first and its last. */
inline QStringList rows(const QString &text, const QString &head)
{
    QStringList lines = definition(text, head).split(u'\n', Qt::SkipEmptyParts);
    if (lines.size() < 2)
        return {};
    return lines.sliced(1, lines.size() - 2);
}

/** The rows of od_description. */
inline QStringList descriptions(const QString &text)
{
    return rows(text, QStringLiteral(" CO_OBJECT_DESC_T "));
}

/** The row of od_description with that comment ("0x2000:1"), without the comment; empty if there is none. */
inline QString description(const QString &text, const QString &place)
{
    const QString comment = QStringLiteral("/* ") + place + QStringLiteral(" */ ");
    const QStringList all = descriptions(text);
    for (const QString &row : all)
        if (row.endsWith(comment))
            return row.chopped(comment.size());
    return {};
}

/** The columns of a row: sub-index, type, storage class, value field, attributes, constant, limits. */
inline QStringList columns(const QString &row)
{
    QString text = row.trimmed();
    text.remove(QStringLiteral("{ ")).remove(QStringLiteral("},"));
    QStringList result = text.split(u',');
    for (QString &column : result)
        column = column.trimmed();
    return result;
}

/** Which column of a description row is which. */
enum Column { Sub, Type, Specifier, Value, Attributes, Constant };

/** A column of the row with that comment. */
inline QString column(const QString &text, const QString &place, Column which)
{
    return columns(description(text, place)).value(which);
}

/** The places ("0x2000:1") of all rows of od_description. */
inline QStringList places(const QString &text)
{
    QStringList result;
    const QStringList all = descriptions(text);
    for (const QString &row : all)
        result.append(row.section(QStringLiteral("/* "), 1).section(QStringLiteral(" */"), 0, 0));
    return result;
}

/** The rows of od_assign. */
inline QStringList assignments(const QString &text)
{
    return rows(text, QStringLiteral(" CO_OD_ASSIGN_T "));
}

/** The first lines of the tables behind a comment, in their order, up to the next comment. */
inline QStringList tableHeads(const QString &text, const QString &comment)
{
    QStringList heads;
    const QStringList section = text.section(comment, 1).section(QStringLiteral("\n/*"), 0, 0).split(u'\n');
    for (const QString &line : section)
        if (line.startsWith(QStringLiteral("static")))
            heads.append(line);
    return heads;
}

/** What stands before the definition of memory specifiers, without the lines of the title. */
inline QString includes(const QString &text)
{
    const QString body = text.section(QStringLiteral(" */\n"), 1);
    return body.first(body.indexOf(QStringLiteral("/* definition of memory specifier */")));
}

} // namespace Generated
