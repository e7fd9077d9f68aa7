#pragma once

class GeneratorFactories;

/** Registers the generators of lists of the object dictionary: text, HTML, CSV and ICSV. */
void addDocumentGenerators(GeneratorFactories &factories);
