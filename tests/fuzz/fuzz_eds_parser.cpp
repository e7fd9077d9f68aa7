#include "canopen/EdsParser.h"

#include <QBuffer>

#include <cstdlib>

/** Any bytes as a device description: sub-indices follow their object, and every finding names a line of the
 * file. */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);

    EdsParser parser;
    int current = -1;
    QObject::connect(&parser, &EdsParser::newIndex, &parser, [&](const CANopen::CANopenIndex &object) {
        if (object.index <= current)
            std::abort();
        current = object.index;
    });
    QObject::connect(&parser, &EdsParser::newSubIndex, &parser, [&](const CANopenSubindex &sub) {
        if (sub.index != current || sub.accessType.isEmpty())
            std::abort();
    });
    if (!parser.LoadEds(buffer, QString()) && current >= 0)
        std::abort();
    const auto lines = bytes.count('\n') + bytes.count('\r') + 1;
    for (const EdsFinding &finding : parser.findings()) {
        if (finding.line < 0 || finding.line > lines)
            std::abort();
    }
    return 0;
}
