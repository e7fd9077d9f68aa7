#include "forms/SignalRows.h"

#include "canopen/COHelper.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

QString SignalRows::directionText(quint8 direction)
{
    return direction == ObjectDataBase::Transmit ? QCoreApplication::translate("SignalRows", "Transmit")
                                                 : QCoreApplication::translate("SignalRows", "Receive");
}

QString SignalRows::hexText(quint32 number)
{
    return u"0x"_s + QString::number(number, 16);
}

QString SignalRows::dataTypeText(int dataType)
{
    const QString name = COHelper::index2DataTypeString(quint16(dataType));
    return name.isEmpty() ? QString::number(dataType) : name;
}

int SignalRows::bitCount(int dataType, int ownBits)
{
    const int bits = COHelper::getDataLengthBits(CAN::CANopenDataType(dataType));
    return bits > 0 ? bits : ownBits;
}
