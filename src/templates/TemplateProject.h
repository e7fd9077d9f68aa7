#pragma once

#include "store/ObjectDataBase.h"

#include <QList>
#include <QString>

/** The content of one template database as its text sources tell it, in source order. */
struct TemplateProject
{
    enum class Table : quint8 {
        General,
        Description,
        EnergyBus,
        J1939,
    };

    struct Setting
    {
        Table table;
        QString key;
        QString value;
    };

    struct Object
    {
        quint8 line;
        quint16 index;
        ObjectDataBase::INDEX_DATA_T data;
        QList<ObjectDataBase::SubEntry> subIndices;
    };

    struct Signal
    {
        quint32 number;
        ObjectDataBase::SPN data;
    };

    struct ParameterGroup
    {
        quint8 line;
        quint32 number;
        ObjectDataBase::PGN data;
        QList<Signal> spns;
    };

    /** The edition that the database counts as saved by; it decides which editions may open it. */
    QString edition;
    QList<Setting> settings;
    QList<Object> objects;
    QList<ParameterGroup> groups;
};
