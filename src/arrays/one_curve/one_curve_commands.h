// Handlers of AAC and AAC2.
#pragma once

namespace corvane {

void ArrayAlongCurveCommand(); // AAC: one curve, by a dialog; or an array of its own again
void ArrayLikeBlockCommand();  // AAC2: many curves, by the parameters of an array

} // namespace corvane
