#pragma once

#include "generators/PostGenProcessor.h"
#include "generators/RunDesk.h"
#include "generators/ScriptFolder.h"

/** The steps behind a generation, without one; hidden, with no command at first. */
class PostGenDesk : public RunDesk
{
public:
    static constexpr int giveUpMs = 20000; ///< how long a test waits before it calls a hang a failure

    PostGenDesk() : RunDesk({1})
    {
        processor.setProject(store, folder.path(), QStringLiteral("project"));
        processor.setHidden(true);
    }

    /** The project's own command. */
    void command(const QString &program, const QString &arguments, bool wait)
    {
        setMisc(QStringLiteral("postGenEnabled"), QStringLiteral("1"));
        setMisc(QStringLiteral("postgencmd"), program);
        setMisc(QStringLiteral("postgencmdargs"), arguments);
        setMisc(QStringLiteral("postGenWait"), QString::number(int(wait)));
    }
    bool runToItsEnd()
    {
        processor.start();
        return processor.waitForEnd(giveUpMs);
    }

    ScriptFolder scripts;
    PostGenProcessor processor{&output, &progress};
};
