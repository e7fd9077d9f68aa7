#include "app/Edition.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

bool nameIs(QLatin1StringView name)
{
    return QCoreApplication::applicationName() == name;
}

} // namespace

bool Edition::isCANopen()
{
    return nameIs("CANopen NodeSmith"_L1);
}

bool Edition::isJ1939()
{
    return nameIs("J1939 NodeSmith"_L1);
}

bool Edition::isCan()
{
    return nameIs("CAN NodeSmith"_L1);
}

bool Edition::isEnergyBus()
{
    return nameIs("EnergyBus NodeGuide"_L1);
}

bool Edition::nameHoldsJ1939()
{
    return QCoreApplication::applicationName().contains("J1939"_L1);
}

bool Edition::nameHoldsCan()
{
    return QCoreApplication::applicationName().contains("CAN Node"_L1);
}

QString Edition::startLineType()
{
    if (QCoreApplication::applicationName().contains("CANopen"_L1))
        return u"1"_s;
    return nameHoldsJ1939() ? u"2"_s : QString();
}

QString Edition::projectTemplate()
{
    return isJ1939() ? u":/databases/data/mtj1939.data"_s
                     : QString(QCoreApplication::applicationDirPath() + "/data/mt.data"_L1);
}

QString Edition::referenceProfile()
{
    return isJ1939() ? u":/codb/v302.codb"_s : u":/codb/v301.codb"_s;
}

QString Edition::iconPath()
{
    QString name = QCoreApplication::applicationName().toLower();
    return ":/icon/icon/"_L1 + name.replace(u' ', u'-') + ".svg"_L1;
}
