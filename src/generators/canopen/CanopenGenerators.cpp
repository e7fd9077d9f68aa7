#include "generators/canopen/CanopenGenerators.h"

#include "generators/GeneratorFactories.h"
#include "generators/canopen/GenDefineGenerator.h"
#include "generators/canopen/IndicationGenerator.h"
#include "generators/canopen/ObjDictGenerator.h"
#include "generators/canopen/SrdoGenerator.h"
#include "generators/canopen/VobjDictGenerator.h"

namespace {

std::unique_ptr<AbstractGenerator> makeObjDict(const GeneratorRequest &request)
{
    std::unique_ptr<ObjectDictionaryGenerator> generator;
    if (request.core)
        generator = std::make_unique<ObjDictGeneratorV4>(request.compactArrays);
    else
        generator = std::make_unique<ObjDictGenerator>(request.compactArrays);
    generator->setForJ1939Server(request.forJ1939SdoServer);
    return generator;
}

} // namespace

void addCanopenGenerators(GeneratorFactories &factories)
{
    factories.add(GeneratorKind::Define, makeDefineGenerator);
    factories.add(GeneratorKind::Indication, makeIndicationGenerator);
    factories.add(GeneratorKind::ObjDict, makeObjDict);
    factories.add(GeneratorKind::VobjDict, makeVirtualDictionaryGenerator);
    factories.add(GeneratorKind::Srdo, makeSrdoGenerator);
}
