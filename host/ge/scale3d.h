// AcGeScale3d: scale factors along the three axes.
#pragma once

class AcGeScale3d {
public:
    double sx = 1, sy = 1, sz = 1;
    static const AcGeScale3d kIdentity;

    constexpr AcGeScale3d() = default;
    constexpr explicit AcGeScale3d(double all) : sx(all), sy(all), sz(all) {}
    constexpr AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}
    AcGeScale3d& set(double x, double y, double z) { return *this = {x, y, z}; }

    constexpr double operator[](unsigned i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
    double& operator[](unsigned i) { return i == 0 ? sx : i == 1 ? sy : sz; }
    constexpr AcGeScale3d operator*(const AcGeScale3d& s) const { return {sx * s.sx, sy * s.sy, sz * s.sz}; }
    constexpr AcGeScale3d operator*(double s) const { return {sx * s, sy * s, sz * s}; }
    AcGeScale3d& operator*=(const AcGeScale3d& s) { return *this = *this * s; }
    AcGeScale3d& operator*=(double s) { return *this = *this * s; }
    // A zero factor has an infinite inverse.
    constexpr AcGeScale3d inverse() const { return {1 / sx, 1 / sy, 1 / sz}; }
    constexpr bool isEqualTo(const AcGeScale3d& s, double tolerance = 1e-10) const {
        return near(sx - s.sx, tolerance) && near(sy - s.sy, tolerance) && near(sz - s.sz, tolerance);
    }
    constexpr bool operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
    // All three factors are the same.
    constexpr bool isProportional(double tolerance = 1e-10) const {
        return near(sx - sy, tolerance) && near(sx - sz, tolerance);
    }

private:
    static constexpr bool near(double d, double tolerance) { return d <= tolerance && -d <= tolerance; }
};

inline constexpr AcGeScale3d AcGeScale3d::kIdentity{};
