// The door to the host: what shows and listens while the user works in a command: input-point monitors,
// jigs, key filters, transient graphics and the entities that draw themselves as such.
#pragma once
#include "host/ed/input_point.h"
#include "host/ed/jig.h"
#include "host/ed/message_filter.h"
#include "host/gi/draw.h"
#include "host/view/transients.h"
