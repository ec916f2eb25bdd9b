#include <gtest/gtest.h>

#include "lumotypes.h"
