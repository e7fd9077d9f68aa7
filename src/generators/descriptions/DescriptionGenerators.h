#pragma once

class GeneratorFactories;

/** Registers the generators of device descriptions: EDS and XDD files. */
void addDescriptionGenerators(GeneratorFactories &factories);
