#pragma once

#include <QString>

/**
 * Gives the object dictionary source a C++ twin: gen_objdict.cpp is a copy of gen_objdict.c, gen_user.hpp
 * is gen_user.h with its RET_T functions declared extern "C". Files without their source vanish or stay
 * away; nothing is done where the folder cannot be written.
 */
void writeCppOutput(const QString &folder);
