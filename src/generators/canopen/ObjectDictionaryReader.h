#pragma once

class ObjectDataBase;
struct ObjectDictionaryRequest;
struct ObjectDictionaryView;

/** Reads settings, lines, objects and sub-indices; no position is known yet. The one place that asks the
 * store. */
void readObjectDictionary(ObjectDataBase &store, const ObjectDictionaryRequest &request,
                          ObjectDictionaryView &view);
