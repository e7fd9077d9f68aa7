#pragma once

class GeneratorFactories;

/** Registers the generators of CANopen sources. */
void addCanopenGenerators(GeneratorFactories &factories);
