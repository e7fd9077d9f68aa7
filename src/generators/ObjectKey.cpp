#include "generators/ObjectKey.h"

using namespace Qt::StringLiterals;

QString ObjectKey::comment(quint32 key, bool multiLine)
{
    const QString hexIndex = u"%1"_s.arg(index(key), 4, 16, '0'_L1);
    const QString sub = QString::number(subIndex(key));
    return multiLine ? u" /* %1-0x%2:%3 */"_s.arg(QString::number(line(key)), hexIndex, sub)
                     : u" /* 0x%1:%2 */"_s.arg(hexIndex, sub);
}
