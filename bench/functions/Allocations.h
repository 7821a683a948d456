#pragma once

#include <cstddef>

// The calls of malloc(), calloc() and realloc() in this process until now: Qt's containers do not
// go through operator new.
std::size_t allocationsSoFar();
