// Everything of the window system.
#pragma once

#include "host/ui/dialog.h"
#include "host/ui/image.h"
#include "host/ui/monitors.h"
#include "host/ui/queue.h"
#include "host/ui/runner.h"
