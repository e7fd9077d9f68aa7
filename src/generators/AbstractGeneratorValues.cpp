#include "generators/AbstractGenerator.h"
#include "generators/CValues.h"
#include "generators/ObjectKey.h"

QString AbstractGenerator::formatExtendedValue(int typeCode, quint64 value)
{
    return CValues::extendedValue(typeCode, value);
}

QString AbstractGenerator::objectComment(quint32 key) const
{
    return ObjectKey::comment(key, isMultiLineForm());
}
