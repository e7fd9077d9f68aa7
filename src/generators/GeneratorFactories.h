#pragma once

#include "generators/AbstractGenerator.h"

#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>

/** What the steps of a run ask for; twins of two stack generations are one kind. */
enum class GeneratorKind {
    Csv,
    Dbc,
    Define,
    Eds,
    ExtDecl,
    Html,
    Icsv,
    Indication,
    Indices,
    J1939Adapter,
    J1939Html,
    J1939TextDoc,
    MultiPro,
    ObjDict,
    Pgn,
    RawCanDbc,
    RawCanTextDoc,
    Sdm,
    Srdo,
    TextDoc,
    VobjDict,
    Xdd,
};

/**
 * What a factory needs to know to make a generator. The run itself sets store, folder, project name, line,
 * suffix and the multi-line flag; a factory heeds the fields that its generator has a use for.
 */
struct GeneratorRequest
{
    GeneratorKind kind = GeneratorKind::Define;
    bool core = false; ///< asks for the newer one of two twins
    quint8 line = 0; ///< 0 for generators that cover all lines
    QString fileSuffix;
    QList<quint8> lines; ///< of the whole run

    bool compactArrays = false; ///< object dictionary
    bool forJ1939SdoServer = false; ///< object dictionary of a project without a CANopen line
    bool generateVirtualObjects = false; ///< virtual object dictionary
    bool staticSrdoData = false; ///< SRDO
    bool hasJ1939 = false; ///< stack definitions
    bool multiProtocol = false; ///< stack definitions
    bool disableDocu = false; ///< ICSV
    QString edsVariant; ///< EDS
    bool canFd = false; ///< EDS
    bool classical = false; ///< EDS: the classical CAN description of a CAN FD device

    bool operator==(const GeneratorRequest &) const = default;
};

/**
 * The generators that a run can use. One that is not registered is no failure: its step is left out of
 * the run without a word.
 */
class GeneratorFactories
{
public:
    using Factory = std::function<std::unique_ptr<AbstractGenerator>(const GeneratorRequest &)>;

    void add(GeneratorKind kind, const Factory &factory) { m_factories.insert(kind, factory); }
    bool contains(GeneratorKind kind) const { return m_factories.contains(kind); }
    /** Null where no factory is registered. */
    std::unique_ptr<AbstractGenerator> create(const GeneratorRequest &request) const
    {
        const Factory factory = m_factories.value(request.kind);
        return factory ? factory(request) : nullptr;
    }

private:
    QMap<GeneratorKind, Factory> m_factories;
};

/** Offered by a generator that takes a section of the former file over, which the user then is told of. */
class UserSectionKeeper
{
public:
    virtual ~UserSectionKeeper() = default;
    /** The section as it stood in the former file; known when the job has ended. */
    virtual QString userSection() const = 0;
};
