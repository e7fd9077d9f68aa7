#pragma once

#include <chrono>

/** Delivers queued signals for the given time before the caller goes on. */
void runLocalEventLoop(std::chrono::milliseconds duration);
