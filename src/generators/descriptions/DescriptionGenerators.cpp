#include "generators/descriptions/DescriptionGenerators.h"

#include "generators/GeneratorFactories.h"
#include "generators/descriptions/EDSGenerator.h"
#include "generators/descriptions/XDDGenerator.h"

namespace {

std::unique_ptr<AbstractGenerator> makeEds(const GeneratorRequest &request)
{
    return std::make_unique<EDSGenerator>(request.edsVariant, request.canFd, request.classical);
}

std::unique_ptr<AbstractGenerator> makeXdd(const GeneratorRequest &request)
{
    return std::make_unique<XDDGenerator>(request.edsVariant);
}

} // namespace

void addDescriptionGenerators(GeneratorFactories &factories)
{
    factories.add(GeneratorKind::Eds, makeEds);
    factories.add(GeneratorKind::Xdd, makeXdd);
}
