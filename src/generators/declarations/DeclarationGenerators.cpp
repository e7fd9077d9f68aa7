#include "generators/declarations/DeclarationGenerators.h"

#include "generators/GeneratorFactories.h"
#include "generators/declarations/ExtDeclGenerator.h"
#include "generators/declarations/IndicesGenerator.h"

namespace {

std::unique_ptr<AbstractGenerator> makeIndices(const GeneratorRequest &request)
{
    auto generator = std::make_unique<IndicesGenerator>();
    generator->setLines(request.lines);
    return generator;
}

std::unique_ptr<AbstractGenerator> makeExtDecl(const GeneratorRequest &request)
{
    if (request.core)
        return std::make_unique<ExtDeclGeneratorV4>();
    return std::make_unique<ExtDeclGenerator>();
}

} // namespace

void addDeclarationGenerators(GeneratorFactories &factories)
{
    factories.add(GeneratorKind::Indices, makeIndices);
    factories.add(GeneratorKind::ExtDecl, makeExtDecl);
}
