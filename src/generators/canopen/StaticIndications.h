#pragma once

#include <QList>
#include <QString>

class CodeWriter;
class Dialect;
class SettingValues;
struct ObjectDictionaryView;

/** The pointers to indication functions of the application that are fixed at compile time. */
class StaticIndications
{
public:
    StaticIndications() = default;
    /** A J1939 server has none: its file does not know the prototypes. */
    StaticIndications(const SettingValues &general, const ObjectDictionaryView &view);

    void write(CodeWriter &out, const Dialect &dialect) const;

private:
    struct Pointer
    {
        QStringView text; ///< in the words of the V4 stack
        QString function;
    };

    QList<Pointer> m_pointers;
};
