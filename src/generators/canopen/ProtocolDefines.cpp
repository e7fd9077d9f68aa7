// Sections of the other protocols: their place and heading.

#include "generators/canopen/DefineSections.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/DefineWriter.h"

using namespace Qt::StringLiterals;

// With CANopen the lines and the form of the object dictionary are told already.
void DefineSections::j1939(DefineWriter &out, const DefineView &view)
{
    if (!view.request.hasJ1939)
        return;
    out.text(u"/* J1939 Defines */\n"_s);
    if (view.hasCANopen)
        return;
    multiLine(out, view);
    if (view.hasJ1939Server && view.general.isOn(u"limit_check"_s))
        out.flag(u"CO_CONFIG_LIMIT_CHECK");
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
