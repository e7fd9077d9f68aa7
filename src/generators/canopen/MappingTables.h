#pragma once

struct ObjectDictionaryView;

/**
 * Lists the PDOs of every line and makes the mapping tables of those whose mapping is fixed.
 *
 * Without network routing receive PDOs of a line with equal mappings share a table. Only lines that the
 * output has functions for have tables: line 0 in the single-line form, none for a J1939 project.
 */
void addMappingTables(ObjectDictionaryView &view);
