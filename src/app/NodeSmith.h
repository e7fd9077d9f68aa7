#pragma once

class KorvelBaseApplication;
class QString;

/** What every edition sets before its first window: names, settings, drag thresholds, icon. */
void setUpApplication(KorvelBaseApplication &application, const QString &name);

/**
 * Runs the program under the name of one edition and gives the exit code of its event loop; 1 when there is
 * no display to show its window on, 128 and more when a signal has ended it.
 *
 * The name decides everything that differs between the editions, see Edition.
 */
int runNodeSmith(int argc, char **argv, const char *editionName);
