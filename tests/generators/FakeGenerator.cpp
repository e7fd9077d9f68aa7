#include "generators/FakeGenerator.h"

using namespace Qt::StringLiterals;

namespace {

QString name(GeneratorKind kind)
{
    switch (kind) {
    case GeneratorKind::Csv:
        return u"Csv"_s;
    case GeneratorKind::Dbc:
        return u"Dbc"_s;
    case GeneratorKind::Define:
        return u"Define"_s;
    case GeneratorKind::Eds:
        return u"Eds"_s;
    case GeneratorKind::ExtDecl:
        return u"ExtDecl"_s;
    case GeneratorKind::Html:
        return u"Html"_s;
    case GeneratorKind::Icsv:
        return u"Icsv"_s;
    case GeneratorKind::Indication:
        return u"Indication"_s;
    case GeneratorKind::Indices:
        return u"Indices"_s;
    case GeneratorKind::J1939Adapter:
        return u"J1939Adapter"_s;
    case GeneratorKind::J1939Html:
        return u"J1939Html"_s;
    case GeneratorKind::J1939TextDoc:
        return u"J1939TextDoc"_s;
    case GeneratorKind::MultiPro:
        return u"MultiPro"_s;
    case GeneratorKind::ObjDict:
        return u"ObjDict"_s;
    case GeneratorKind::Pgn:
        return u"Pgn"_s;
    case GeneratorKind::RawCanDbc:
        return u"RawCanDbc"_s;
    case GeneratorKind::RawCanTextDoc:
        return u"RawCanTextDoc"_s;
    case GeneratorKind::Sdm:
        return u"Sdm"_s;
    case GeneratorKind::Srdo:
        return u"Srdo"_s;
    case GeneratorKind::TextDoc:
        return u"TextDoc"_s;
    case GeneratorKind::VobjDict:
        return u"VobjDict"_s;
    case GeneratorKind::Xdd:
        return u"Xdd"_s;
    }
    return {};
}

} // namespace

QString FakeGenerators::label(const GeneratorRequest &request)
{
    QString result = name(request.kind);
    if (request.kind == GeneratorKind::Eds && !request.edsVariant.isEmpty())
        result += u'=' + request.edsVariant;
    if (request.classical)
        result += u"(classical)"_s;
    else if (request.canFd)
        result += u"(fd)"_s;
    return result + u':' + QString::number(request.line) + request.fileSuffix;
}
