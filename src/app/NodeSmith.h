#pragma once

/**
 * Runs the program under the name of one edition and gives the exit code of its event loop.
 *
 * The name decides everything that differs between the editions, see Edition.
 */
int runNodeSmith(int argc, char **argv, const char *editionName);
