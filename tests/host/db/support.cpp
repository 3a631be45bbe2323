// The test entity's class.
#include "support.h"

HOST_DEFINE_CLASS(TestMark, AcDbEntity, L"TESTMARK")
