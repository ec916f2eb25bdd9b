#include <benchmark/benchmark.h>

#include "lumotypes.h"
