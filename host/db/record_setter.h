// The body that the setters of table records share.
#pragma once
#include "host/db/symboltable.h"

// What must hold of `value`, and the member that takes it.
#define HOST_RECORD_SETTER(CLASS, NAME, TYPE, VALID, MEMBER)                                                 \
    Acad::ErrorStatus CLASS::NAME(TYPE value) {                                                              \
        if (!(VALID)) return Acad::eInvalidInput;                                                            \
        if (auto es = willModify(); es != Acad::eOk) return es;                                              \
        return MEMBER = value, Acad::eOk;                                                                    \
    }
