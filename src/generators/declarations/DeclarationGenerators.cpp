#include "generators/declarations/DeclarationGenerators.h"

#include "generators/GeneratorFactories.h"

void addDeclarationGenerators(GeneratorFactories &) { }
