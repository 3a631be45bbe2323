// All geometry classes of the host at once, for those who use many of them. Curve mathematics is in curves/.
#pragma once

#include "host/ge/arc.h"
#include "host/ge/array.h"
#include "host/ge/extents.h"
#include "host/ge/line.h"
#include "host/ge/matrix2d.h"
#include "host/ge/matrix3d.h"
#include "host/ge/plane.h"
#include "host/ge/point2d.h"
#include "host/ge/point3d.h"
#include "host/ge/scale3d.h"
#include "host/ge/tol.h"
#include "host/ge/vector2d.h"
#include "host/ge/vector3d.h"
