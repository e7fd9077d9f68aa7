#pragma once

struct ObjectDictionaryView;

/**
 * Fills the typed value tables and gives every sub-index its places in them.
 *
 * Equal constants of one type share a row, over all lines, limits included; rows stand in the order of
 * their first use.
 */
void assignValuePositions(ObjectDictionaryView &view);
