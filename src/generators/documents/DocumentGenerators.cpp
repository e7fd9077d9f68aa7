#include "generators/documents/DocumentGenerators.h"

#include "generators/GeneratorFactories.h"

void addDocumentGenerators(GeneratorFactories &) { }
