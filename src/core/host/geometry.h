// The door to the host: geometry types.
#pragma once
#include "host/ge/ge.h"
