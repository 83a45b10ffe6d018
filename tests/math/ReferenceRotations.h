// ReferenceRotations: plain 3x3 matrices for column vectors, made only of rotations about the axes and the textbook
// product, to compare the library's conversions with.
//     Plain r = rotationAbout(2, a) * rotationAbout(0, b);         // about x first
// And a seeded sweep: forEachRotation calls back with ten thousand rotations, each as such a matrix and as (w, x, y, z).
#ifndef MRCOMMON_TESTS_MATH_REFERENCEROTATIONS_H
#define MRCOMMON_TESTS_MATH_REFERENCEROTATIONS_H

#include <array>
#include <cmath>
#include <cstdint>

struct Plain {
    double e[3][3] = {};
};

inline Plain operator*(Plain const& a, Plain const& b) {
    Plain c;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) c.e[i][j] += a.e[i][k] * b.e[k][j];
    return c;
}

inline Plain rotationAbout(int axis, double angle) {
    int const next = (axis + 1) % 3, last = (axis + 2) % 3;
    Plain r;
    r.e[axis][axis] = 1;
    r.e[next][next] = r.e[last][last] = std::cos(angle);
    r.e[last][next] = std::sin(angle);
    r.e[next][last] = -std::sin(angle);
    return r;
}

/// Returns a matrix of the library that holds `r` or its transpose.
template <class M> M filled(Plain const& r, bool transposed) {
    M m;
    for (int i = 0; i < 9; ++i)
        m(i / 3, i % 3) =
            static_cast<std::decay_t<decltype(m(0, 0))>>(transposed ? r.e[i % 3][i / 3] : r.e[i / 3][i % 3]);
    return m;
}

/// Returns the larger of two differences, infinite if one is NaN.
inline double worse(double a, double b) { return b <= a ? a : std::isnan(b) ? HUGE_VAL : b; }

/// Returns the largest difference between the elements of `m` and those of `r` or of its transpose.
template <class M> double distance(M const& m, Plain const& r, bool transposed) {
    double worst = 0;
    for (int i = 0; i < 9; ++i)
        worst =
            worse(worst, std::abs(m(i / 3, i % 3) - (transposed ? r.e[i % 3][i / 3] : r.e[i / 3][i % 3])));
    return worst;
}

class Uniform {
public:
    double operator()(double low, double high) {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return low + (high - low) * static_cast<double>(state_ >> 40) / 16777216.0;
    }

private:
    std::uint64_t state_ = 1970;
};

/// Visits rotations by c about z, then b about x, then a about z. Their quaternions follow from the half angles:
/// cos(b/2) cos((a+c)/2), sin(b/2) cos((a-c)/2), sin(b/2) sin((a-c)/2), cos(b/2) sin((a+c)/2).
template <class Visit> void forEachRotation(Visit const& visit) {
    Uniform uniform;
    for (int i = 0; i < 10000; ++i) {
        double const a = uniform(-3.14, 3.14), b = uniform(0, 3.14), c = uniform(-3.14, 3.14);
        std::array<double, 4> const wxyz = {
            std::cos(b / 2) * std::cos((a + c) / 2), std::sin(b / 2) * std::cos((a - c) / 2),
            std::sin(b / 2) * std::sin((a - c) / 2), std::cos(b / 2) * std::sin((a + c) / 2)};
        visit(rotationAbout(2, a) * rotationAbout(0, b) * rotationAbout(2, c), wxyz);
    }
}

#endif
