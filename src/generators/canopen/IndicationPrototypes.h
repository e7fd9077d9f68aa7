#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <span>

class CodeWriter;
class Dialect;
class ObjectDataBase;
class SettingValues;

/** A setting that may hold the name of a function, and what the function's prototype says beside the name. */
struct IndicationPrototype
{
    QLatin1StringView key;
    QStringView returnType;
    QStringView arguments; ///< in the words of the V4 stack; to the end of the line
};

/**
 * The prototypes of the indication functions that a project names for the compile time.
 *
 * What no function can be called, an expression or NULL say, is named, but has no prototype.
 */
class IndicationPrototypes
{
public:
    /** Those of CANopen; USDO has its own where a line has the service. */
    static IndicationPrototypes canopen(ObjectDataBase &store);
    /** The functions of rows that another protocol has; empty unless the project asks for static UDS ones. */
    static IndicationPrototypes uds(ObjectDataBase &store, std::span<const IndicationPrototype> rows);

    bool isEmpty() const { return m_functions.isEmpty(); }
    /** In the multi-line form every function is told the line first. */
    void write(CodeWriter &out, const Dialect &dialect, bool multiLine) const;

private:
    struct Function
    {
        const IndicationPrototype *row;
        QString name;
    };

    void add(const SettingValues &general, std::span<const IndicationPrototype> rows);

    QList<Function> m_functions;
};
