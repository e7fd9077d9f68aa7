#pragma once

struct ObjectDictionaryView;

/** Decides which sub-indices and objects have rows, and what their rows say of service and position. */
void describeObjects(ObjectDictionaryView &view);

/**
 * The same for the sub-indices that functions of the application serve, and for them alone: rows and counts
 * are those of the virtual dictionary.
 */
void describeVirtualObjects(ObjectDictionaryView &view);
