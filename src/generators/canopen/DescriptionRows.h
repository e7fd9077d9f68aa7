#pragma once

struct ObjectDictionaryView;

/** Decides which sub-indices and objects have rows, and what their rows say of service and position. */
void describeObjects(ObjectDictionaryView &view);
