#include "generators/descriptions/DescriptionGenerators.h"

#include "generators/GeneratorFactories.h"

void addDescriptionGenerators(GeneratorFactories &) { }
