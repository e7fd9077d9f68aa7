#pragma once

#include "generators/declarations/DefineNames.h"

class ObjectDataBase;

/** How the defines of a run are asked for. */
struct IndicesRequest
{
    QList<quint8> lines;
    bool multiLineForm = false; ///< names bear the numbers of their lines
};

/** All defines of gen_indices.h but its last one, in their order and with their final names. */
struct IndicesView
{
    /** The define that ends the file: the sub-index that tells the number of entries. */
    static constexpr QStringView lastName = u"S_NUMBER_OF_ENTRIES";

    QList<DefineNames::Define> defines;

    static IndicesView read(ObjectDataBase &store, const IndicesRequest &request);
};
