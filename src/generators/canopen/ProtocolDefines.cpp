// Sections of the other protocols: their place and heading.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

using namespace Qt::StringLiterals;

void DefineSections::j1939(DefineWriter &out, const DefineView &view)
{
    if (view.request.hasJ1939)
        out.text(u"/* J1939 Defines */\n"_s);
}

// With CANopen the buffers are those of the lines, which are defined already.
void DefineSections::bootloader(DefineWriter &out, const DefineView &view)
{
    if (!view.isBootloader() || view.hasCANopen)
        return;
    out.list(u"CORE_REC_BUFFER_COUNTS", view, &DefineLine::receiveBuffers);
    out.list(u"CORE_TR_BUFFER_COUNTS", view, &DefineLine::transmitBuffers);
}

void DefineSections::rawCan(DefineWriter &out, const DefineView &view)
{
    if (view.hasRawCan)
        out.text(u"\n/* CAN RAW Defines */\n"_s);
}

void DefineSections::isoTp(DefineWriter &out, const DefineView &view)
{
    if (view.general.number(u"isotp_supported"_s) == 1 || view.hasUds())
        out.text(u"\n/* ISO-TP Defines */\n"_s);
}
