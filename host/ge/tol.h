// Geometric tolerances of the host's point and vector classes, and the conditions their setters report.
// The tolerances of the curve mathematics stand in tolerances.h.
#pragma once

// Distances below equalPoint are no distance; unit vectors that differ by less than equalVector are the same.
class AcGeTol {
public:
    constexpr AcGeTol() = default;
    constexpr double equalPoint() const { return point_; }
    constexpr double equalVector() const { return vector_; }
    constexpr AcGeTol& setEqualPoint(double value) {
        point_ = value;
        return *this;
    }
    constexpr AcGeTol& setEqualVector(double value) {
        vector_ = value;
        return *this;
    }

private:
    double point_ = 1e-10;
    double vector_ = 1e-10;
};

// The tolerance every operation takes when none is given.
struct AcGeContext {
    static inline AcGeTol gTol{};
};

struct AcGe {
    // How far apart the knots of two neighbouring fit points lie: by their distance, its root, or evenly.
    enum KnotParameterization { kChord = 0, kSqrtChord = 1, kUniform = 2 };
    enum ErrorCondition {
        kOk,
        k0This,
        k0Arg1,
        k0Arg2,
        kPerpendicularArg1Arg2,
        kEqualArg1Arg2,
        kEqualArg1Arg3,
        kEqualArg2Arg3,
        kLinearlyDependentArg1Arg2Arg3,
        kArg1TooBig,
        kArg1OnThis,
        kArg1InsideThis
    };
};
using AcGeError = AcGe::ErrorCondition;
