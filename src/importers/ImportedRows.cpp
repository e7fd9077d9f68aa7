#include "importers/ImportedRows.h"

#include "canopen/CANTypes.h"
#include "canopen/COHelper.h"
#include "importers/ImplementationRules.h"

using namespace Qt::StringLiterals;

namespace ImportedRows {

ProjectRecords::SubIndexData blank()
{
    ProjectRecords::SubIndexData sub;
    sub.allowedaccesstypes = u"const,ro,rw,wo,rww,rwr"_s;
    sub.varname = u" "_s;
    return sub;
}

void setDefaultValue(ProjectRecords::SubIndexData &sub, const QString &value)
{
    sub.defaultvalue = value;
    sub.defaultineds = !value.isEmpty();
    sub.writedefaulttoeds = sub.defaultineds;
}

void setLimits(ProjectRecords::SubIndexData &sub, const QString &low, const QString &high)
{
    COHelper::getDefaultLimits(CAN::CANopenDataType(sub.datatype), sub.lowlimit, sub.uplimit);
    sub.limitineds = !low.isEmpty() || !high.isEmpty();
    if (!low.isEmpty())
        sub.lowlimit = low;
    if (!high.isEmpty())
        sub.uplimit = high;
}

ProjectRecords::SubIndexData count(int highest)
{
    ProjectRecords::SubIndexData sub = blank();
    sub.name = u"Highest subindex supported"_s;
    sub.datatype = CAN::Unsigned8;
    sub.accesstype = u"ro"_s;
    setLimits(sub, {}, {});
    setDefaultValue(sub, QString::number(highest));
    return sub;
}

void setManaged(ProjectRecords::SubIndexData &sub, quint16 index, quint8 subIndex)
{
    // A text that is constant for the device is read-only for the rule that chooses an implementation.
    const bool constant = sub.accesstype == u"const"_s;
    sub.implementation = ImplementationRules::managed(sub.datatype, constant ? u"ro"_s : sub.accesstype);
    if (sub.implementation == CANopen::ApplicationVariable)
        sub.varname = variableName(index, subIndex);
}

void keepForeignDataType(ProjectRecords::SubIndexData &sub)
{
    // From here on the numbers of this system's data types are not those of CiA 301.
    constexpr int firstOwnDataType = CAN::Unsigned2;
    if (sub.datatype >= firstOwnDataType)
        sub.metadata.insert(u"eds_datatype"_s, QString::number(sub.datatype));
}

QString variableName(quint16 index, quint8 subIndex)
{
    return u"v_%1%2"_s.arg(index, 4, 16, QLatin1Char('0')).arg(subIndex, 2, 16, QLatin1Char('0'));
}

} // namespace ImportedRows
