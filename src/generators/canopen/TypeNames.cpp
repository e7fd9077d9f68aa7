#include "generators/canopen/TypeNames.h"

#include "canopen/CANTypes.h"
#include "canopen/COHelper.h"
#include "generators/CValues.h"
#include "generators/Dialect.h"

using namespace Qt::StringLiterals;

namespace {

QString shortName(int dataType)
{
    switch (dataType) {
    case CAN::Boolean:
        return u"BOOL"_s;
    case CAN::OctetString:
        return u"OCTET_STRING"_s;
    case CAN::VisibleString:
        return u"STRING_NULL"_s;
    default:
        break;
    }
    const bool isBitString = dataType >= CAN::Unsigned2 && dataType <= CAN::Unsigned7;
    const QString name =
        COHelper::index2DataTypeShortString(isBitString ? quint16(CAN::Unsigned8) : quint16(dataType));
    return name.isEmpty() ? u"NON_NUMERIC"_s : name;
}

} // namespace

QString typeMacro(int dataType, const Dialect &dialect)
{
    return dialect.text(u"CORE_DTYPE_"_s) + shortName(CValues::describedType(dataType));
}
