#include "generators/documents/DocumentGenerators.h"

#include "generators/GeneratorFactories.h"
#include "generators/documents/CSVGenerator.h"
#include "generators/documents/HTMLGenerator.h"
#include "generators/documents/ICSVGenerator.h"
#include "generators/documents/TextDocGenerator.h"

void addDocumentGenerators(GeneratorFactories &factories)
{
    factories.add(GeneratorKind::TextDoc,
                  [](const GeneratorRequest &) { return std::make_unique<TextDocGenerator>(); });
    factories.add(GeneratorKind::Html,
                  [](const GeneratorRequest &) { return std::make_unique<HTMLGenerator>(); });
    factories.add(GeneratorKind::Csv,
                  [](const GeneratorRequest &) { return std::make_unique<CSVGenerator>(); });
    factories.add(GeneratorKind::Icsv, [](const GeneratorRequest &request) {
        return std::make_unique<ICSVGenerator>(request.disableDocu);
    });
}
