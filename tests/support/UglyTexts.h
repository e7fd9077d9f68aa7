#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

/** Texts as people and other programs leave them in projects, to be written into files of any format. */
namespace UglyTexts {

inline const QStringList &all()
{
    static const QStringList texts{QStringLiteral("a\nb"),
                                   QStringLiteral("a\r\nb\r"),
                                   QStringLiteral("\n#endif\n#error \"out\""),
                                   QStringLiteral("Größe in µm"),
                                   QStringLiteral("转速"),
                                   QStringLiteral("\U0001F600"),
                                   QStringLiteral("\"quoted\""),
                                   QStringLiteral("\"open, and not closed"),
                                   QStringLiteral("5\" pipe"),
                                   QStringLiteral("it's"),
                                   QStringLiteral("*/ int x; /*"),
                                   QStringLiteral("// \\"),
                                   QStringLiteral("?\?/"),
                                   QStringLiteral("</td></tr></table><script>alert(1)</script>"),
                                   QStringLiteral("<br>"),
                                   QStringLiteral("]]> --> &amp; &"),
                                   QStringLiteral("a,b,,c,"),
                                   QStringLiteral("a;b;"),
                                   QStringLiteral("c,0x2000,0x2001"),
                                   QStringLiteral("d;0x2000"),
                                   QStringLiteral("#5"),
                                   QStringLiteral("=1+1"),
                                   QStringLiteral(" "),
                                   QStringLiteral("\ttab\t"),
                                   QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral("b"),
                                   QStringLiteral("a\u2028b\u2029c\u0085d\u000Be"),
                                   QStringLiteral("\u202Edrawkcab\u2066"),
                                   QStringLiteral("\uFEFFmark"),
                                   QString(QChar(0xD800)) + QStringLiteral("half"),
                                   QStringLiteral("{$s+1} $I $"),
                                   QStringLiteral("{{{$i / 0}"),
                                   QStringLiteral("%1 %2 %L1 %n"),
                                   QStringLiteral("__a__--__b__"),
                                   QStringLiteral("RPDO_COMM_PAR_5_for_node_3_x"),
                                   QStringLiteral("RPDO_COMM_PAR_5_FOR_NODE_3_x"),
                                   QStringLiteral("rpdo_comm_par_5_for_node_3_x"),
                                   QStringLiteral("TPDO COMM PAR 5 FOR NODE 3 x"),
                                   QStringLiteral("TPDO_COMM_PAR_99999999999_FOR_NODE_3_x"),
                                   QStringLiteral("L0_I_RPDO_COMM_PAR_5_FOR_NODE_3_x"),
                                   QStringLiteral("speed"),
                                   QStringLiteral("Speed"),
                                   QStringLiteral("SPEED"),
                                   QStringLiteral("speed_2000"),
                                   QStringLiteral("NUMBER_OF_ENTRIES"),
                                   QStringLiteral("int"),
                                   QStringLiteral("<>&\"\n,;ä").repeated(8192),
                                   QString(65536, u'x'),
                                   QString(65536, u'\n'),
                                   QString()};
    return texts;
}

inline const QString &any(QRandomGenerator &random)
{
    return all().at(random.bounded(all().size()));
}

} // namespace UglyTexts
