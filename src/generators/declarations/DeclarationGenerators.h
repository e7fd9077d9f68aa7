#pragma once

class GeneratorFactories;

/** Registers the generators of gen_indices.h, gen_extern_decl.h and gen_var_decl.c. */
void addDeclarationGenerators(GeneratorFactories &factories);
