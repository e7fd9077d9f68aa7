#pragma once

#include <QString>

/** The name of a variant as a part of a file's name; it can neither leave the folder nor name another one. */
inline QString fileNamePart(QString variant)
{
    variant.replace(u'/', u'_');
    return variant.replace(u'\\', u'_');
}
