// Rotations: DQuat and Quat compared with the rotation libraries that were found, and with the leanest inline form of their
// own formulas (the floor). Every library's results are compared with ours before anything is timed.
// All inputs are unit quaternions with angles below 90 degrees, for which no library takes a special case. Quat has no
// product with a vector: that row goes through the 4x4 matrix, as a caller would.
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/Quat.h>

#include "Report.h"

#include <benchmark/benchmark.h>

#ifdef BENCH_EIGEN
#include <Eigen/Geometry>
#endif
#ifdef BENCH_GLM
#define GLM_ENABLE_EXPERIMENTAL
#include <glm/gtc/quaternion.hpp>
#include <glm/gtx/quaternion.hpp>
#endif
#ifdef BENCH_IMATH
#include <ImathMatrixAlgo.h>
#include <ImathQuat.h>
#endif

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace quarn;

namespace {

/// A result in one form for all libraries: w x y z, x y z, or the rows of a matrix for column vectors.
using Values = std::vector<double>;

template <class T> struct Turn {
    Vector3<T> axis;
    T angle;
};

template <class T> struct Ours {
    static constexpr bool isFloat = std::is_same_v<T, float>;
    using Q = std::conditional_t<isFloat, Quat, DQuat>;
    using V = Vector3<T>;
    using M = std::conditional_t<isFloat, Matrix4<T>, Matrix3<T>>; // what QuatToMatrix calculates in T
    using A = Turn<T>;
    static Q make(T w, T x, T y, T z) { return {w, x, y, z}; }
    static Q makeForMatrix(T w, T x, T y, T z) { return isFloat ? Q(x, y, z, w) : Q(w, x, y, z); }
    static Q makeForVector(T w, T x, T y, T z) { return isFloat ? Q(x, y, z, w) : Q(w, -x, -y, -z); }
    static V vector(T x, T y, T z) { return {x, y, z}; }
    static Q product(Q const& a, Q const& b) { return a * b; }
    static Q inverse(Q const& a) { return a.getInverse(); }
    static Q slerp(T t, Q const& a, Q const& b) { return Q::Slerp(t, a, b); }
    static Q squad(T t, Q const& p, Q const& a, Q const& b, Q const& q) { return Q::Squad(t, p, a, b, q); }
    static void toMatrix(Q const& a, M& m) { a.QuatToMatrix(&m); }
    static M matrix(Q const& a) {
        M m;
        toMatrix(a, m);
        return m;
    }
    static Q fromMatrix(M const& m) {
        return Q(const_cast<M*>(&m)); // only read from, although not declared so
    }
    static V rotate(Q const& a, V const& v) {
        if constexpr (isFloat) {
            M const m = matrix(a);
            auto const column = [&](int j) { return v.x * m(0, j) + v.y * m(1, j) + v.z * m(2, j); };
            return {column(0), column(1), column(2)};
        } else {
            return a * v;
        }
    }
    static Q fromAxisAngle(V const& axis, T angle) { return Q(axis, angle); }
    static A toAxisAngle(Q const& a) {
        A turn;
        a.ToAxisAngle(turn.axis, turn.angle);
        return turn;
    }
    static Values values(Q const& a) { return {a[0], a[1], a[2], a[3]}; }
    static Values valuesFromMatrix(Q const& a) {
        return isFloat ? Values{a[3], a[0], a[1], a[2]} : values(a);
    }
    static Values values(V const& v) { return {v.x, v.y, v.z}; }
    static Values values(A const& a) { return {a.angle, a.axis.x, a.axis.y, a.axis.z}; }
    static Values values(M const& m) {
        Values rows;
        for (int i = 0; i < 9; ++i) rows.push_back(isFloat ? m(i % 3, i / 3) : m(i / 3, i % 3));
        return rows;
    }
};

/// The same formulas on plain arrays, as one would write them for this program alone.
template <class T> struct Lean : Ours<T> {
    struct Q {
        T e[4];
    };
    using O = Ours<T>;
    using V = typename O::V;
    using M = typename O::M;
    using A = typename O::A;
    static Q of(typename O::Q const& q) { return {{q[0], q[1], q[2], q[3]}}; }
    static Q make(T w, T x, T y, T z) { return {{w, x, y, z}}; }
    static Q makeForMatrix(T w, T x, T y, T z) { return of(O::makeForMatrix(w, x, y, z)); }
    static Q makeForVector(T w, T x, T y, T z) { return of(O::makeForVector(w, x, y, z)); }
    static Q product(Q const& p, Q const& q) {
        T const *a = p.e, *b = q.e;
        return {{a[0] * b[0] - a[1] * b[1] - a[2] * b[2] - a[3] * b[3],
                 a[0] * b[1] + a[1] * b[0] + a[2] * b[3] - a[3] * b[2],
                 a[0] * b[2] + a[2] * b[0] + a[3] * b[1] - a[1] * b[3],
                 a[0] * b[3] + a[3] * b[0] + a[1] * b[2] - a[2] * b[1]}};
    }
    static Q inverse(Q const& q) {
        T const* a = q.e;
        T const n = a[0] * a[0] + a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
        if (!(n > 0)) return {{0, 0, 0, 0}};
        T const r = 1 / n, minusR = -r;
        return {{a[0] * r, a[1] * minusR, a[2] * minusR, a[3] * minusR}};
    }
    static Q slerp(T t, Q const& p, Q const& q) {
        T const *a = p.e, *b = q.e;
        T const dot = 0 + a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
        T const theta = T(std::acos(double(dot)));
        if (std::abs(double(theta)) < 1e-8) return p;
        T const r = 1 / T(std::sin(double(theta)));
        T const u = T(std::sin(double((1 - t) * theta))) * r, v = T(std::sin(double(t * theta))) * r;
        return {{a[0] * u + b[0] * v, a[1] * u + b[1] * v, a[2] * u + b[2] * v, a[3] * u + b[3] * v}};
    }
    static Q squad(T t, Q const& p, Q const& a, Q const& b, Q const& q) {
        return slerp(2 * t * (1 - t), slerp(t, p, q), slerp(t, a, b));
    }
    static void toMatrix(Q const& q, M& m) {
        T const x = q.e[O::isFloat ? 0 : 1], y = q.e[O::isFloat ? 1 : 2], z = q.e[O::isFloat ? 2 : 3];
        T const w = q.e[O::isFloat ? 3 : 0],
                h = O::isFloat ? T(-1) : T(1); // h folds: the float form is transposed
        T const x2 = 2 * x, y2 = 2 * y, z2 = 2 * z;
        T const xx = x * x2, xy = x * y2, xz = x * z2, yy = y * y2, yz = y * z2, zz = z * z2;
        T const wx = w * x2 * h, wy = w * y2 * h, wz = w * z2 * h;
        m(0, 0) = 1 - (yy + zz), m(0, 1) = xy - wz, m(0, 2) = xz + wy;
        m(1, 0) = xy + wz, m(1, 1) = 1 - (xx + zz), m(1, 2) = yz - wx;
        m(2, 0) = xz - wy, m(2, 1) = yz + wx, m(2, 2) = 1 - (xx + yy);
    }
    static M matrix(Q const& q) {
        M m;
        toMatrix(q, m);
        return m;
    }
    static Q fromMatrix(M const& m) { // the branch that all inputs take
        T const trace = m(0, 0) + m(1, 1) + m(2, 2);
        if (!(trace > 0)) return {{0, 0, 0, 0}};
        T const s = std::sqrt(trace + 1), f = T(0.5) / s, w = T(0.5) * s;
        T const x = (m(2, 1) - m(1, 2)) * f, y = (m(0, 2) - m(2, 0)) * f, z = (m(1, 0) - m(0, 1)) * f;
        if constexpr (O::isFloat) return {{-x, -y, -z, w}};
        return {{w, x, y, z}};
    }
    static V rotate(Q const& a, V const& v) {
        M const m = matrix(a);
        return {v.x * m(0, 0) + v.y * m(1, 0) + v.z * m(2, 0), v.x * m(0, 1) + v.y * m(1, 1) + v.z * m(2, 1),
                v.x * m(0, 2) + v.y * m(1, 2) + v.z * m(2, 2)};
    }
    static Q fromAxisAngle(V const& axis, T angle) {
        double const half = double(angle / 2);
        T const s = T(std::sin(half));
        return {{T(std::cos(half)), axis.x * s, axis.y * s, axis.z * s}};
    }
    static A toAxisAngle(Q const& q) {
        T const* a = q.e;
        T const n = a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
        if (!(double(n) > 1e-8)) return {{1, 0, 0}, 0};
        T const r = 1 / std::sqrt(n);
        return {{a[1] * r, a[2] * r, a[3] * r}, 2 * T(std::acos(double(a[0])))};
    }
    using O::values;
    static Values values(Q const& a) { return {a.e[0], a.e[1], a.e[2], a.e[3]}; }
    static Values valuesFromMatrix(Q const& a) {
        return O::valuesFromMatrix({a.e[0], a.e[1], a.e[2], a.e[3]});
    }
};

/// What the peers have in common: a quaternion is made in the same way for every use.
template <class Self, class T, class Quaternion> struct Peer {
    using Q = Quaternion;
    static Q make(T w, T x, T y, T z) { return Q(w, x, y, z); }
    static Q makeForMatrix(T w, T x, T y, T z) { return make(w, x, y, z); }
    static Q makeForVector(T w, T x, T y, T z) { return make(w, x, y, z); }
    static Q product(Q const& a, Q const& b) { return a * b; }
    template <class M> static void toMatrix(Q const& a, M& m) { m = Self::matrix(a); }
    static Values valuesFromMatrix(Q const& a) { return Self::values(a); }
};

#ifdef BENCH_EIGEN
template <class T> struct EigenPeer : Peer<EigenPeer<T>, T, Eigen::Quaternion<T>> {
    using Q = Eigen::Quaternion<T>;
    using V = Eigen::Matrix<T, 3, 1>;
    using M = Eigen::Matrix<T, 3, 3>;
    using A = Eigen::AngleAxis<T>;
    static V vector(T x, T y, T z) { return {x, y, z}; }
    static Q inverse(Q const& a) { return a.inverse(); }
    static Q slerp(T t, Q const& a, Q const& b) { return a.slerp(t, b); }
    static Q squad(T t, Q const& p, Q const& a, Q const& b, Q const& q) { // no squad of its own
        return p.slerp(t, q).slerp(2 * t * (1 - t), a.slerp(t, b));
    }
    static M matrix(Q const& a) { return a.toRotationMatrix(); }
    static Q fromMatrix(M const& m) { return Q(m); }
    static V rotate(Q const& a, V const& v) { return a * v; }
    static Q fromAxisAngle(V const& axis, T angle) { return Q(A(angle, axis)); }
    static A toAxisAngle(Q const& a) { return A(a); }
    static Values values(Q const& a) { return {a.w(), a.x(), a.y(), a.z()}; }
    static Values values(V const& v) { return {v[0], v[1], v[2]}; }
    static Values values(A const& a) { return {a.angle(), a.axis()[0], a.axis()[1], a.axis()[2]}; }
    static Values values(M const& m) {
        return {m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2), m(2, 0), m(2, 1), m(2, 2)};
    }
};
#endif

#ifdef BENCH_GLM
template <class T> struct GlmPeer : Peer<GlmPeer<T>, T, glm::qua<T>> {
    using Q = glm::qua<T>;
    using V = glm::vec<3, T>;
    using M = glm::mat<3, 3, T>;
    struct A {
        V axis;
        T angle;
    };
    static V vector(T x, T y, T z) { return {x, y, z}; }
    static Q inverse(Q const& a) { return glm::inverse(a); }
    static Q slerp(T t, Q const& a, Q const& b) { return glm::mix(a, b, t); } // the one that flips no sign
    static Q squad(T t, Q const& p, Q const& a, Q const& b, Q const& q) { return glm::squad(p, q, a, b, t); }
    static M matrix(Q const& a) { return glm::mat3_cast(a); }
    static Q fromMatrix(M const& m) { return glm::quat_cast(m); }
    static V rotate(Q const& a, V const& v) { return a * v; }
    static Q fromAxisAngle(V const& axis, T angle) { return glm::angleAxis(angle, axis); }
    static A toAxisAngle(Q const& a) { return {glm::axis(a), glm::angle(a)}; }
    static Values values(Q const& a) { return {a.w, a.x, a.y, a.z}; }
    static Values values(V const& v) { return {v.x, v.y, v.z}; }
    static Values values(A const& a) { return {a.angle, a.axis.x, a.axis.y, a.axis.z}; }
    static Values values(M const& m) { // by columns
        return {m[0][0], m[1][0], m[2][0], m[0][1], m[1][1], m[2][1], m[0][2], m[1][2], m[2][2]};
    }
};
#endif

#ifdef BENCH_IMATH
template <class T> struct ImathPeer : Peer<ImathPeer<T>, T, Imath::Quat<T>> {
    using Q = Imath::Quat<T>;
    using V = Imath::Vec3<T>;
    using M = Imath::Matrix44<T>;
    using A = Turn<T>;
    static V vector(T x, T y, T z) { return {x, y, z}; }
    static Q inverse(Q const& a) { return a.inverse(); }
    static Q slerp(T t, Q const& a, Q const& b) { return Imath::slerp(a, b, t); }
    static Q squad(T t, Q const& p, Q const& a, Q const& b, Q const& q) {
        return Imath::squad(p, a, b, q, t);
    }
    static M matrix(Q const& a) { return a.toMatrix44(); }
    static Q fromMatrix(M const& m) { return Imath::extractQuat(m); }
    static V rotate(Q const& a, V const& v) { return a.rotateVector(v); }
    static Q fromAxisAngle(V const& axis, T angle) { return Q().setAxisAngle(axis, angle); }
    static A toAxisAngle(Q const& a) {
        V const v = a.axis();
        return {{v.x, v.y, v.z}, a.angle()};
    }
    static Values values(Q const& a) { return {a.r, a.v.x, a.v.y, a.v.z}; }
    static Values values(V const& v) { return {v.x, v.y, v.z}; }
    static Values values(A const& a) { return {a.angle, a.axis.x, a.axis.y, a.axis.z}; }
    static Values values(M const& m) { // for row vectors
        return {m[0][0], m[1][0], m[2][0], m[0][1], m[1][1], m[2][1], m[0][2], m[1][2], m[2][2]};
    }
};
#endif

constexpr std::size_t COUNT = 4096;

/// The inputs, the same numbers for every library of one precision.
template <class L, class T> struct Inputs {
    std::vector<typename L::Q> p, a, b, q, forMatrix, forVector;
    std::vector<typename L::V> v, axis;
    std::vector<typename L::M> m;
    std::vector<T> t;

    Inputs() {
        std::mt19937 source(7);
        auto const uniform = [&](double low, double high) {
            return low + (high - low) * (double(source()) / 4294967296.0);
        };
        auto const add = [&](std::vector<typename L::Q>& list, auto make, double const* e) {
            list.push_back(make(T(e[0]), T(e[1]), T(e[2]), T(e[3])));
        };
        for (std::size_t i = 0; i < COUNT; ++i) {
            double const n[3] = {uniform(-1, 1), uniform(-1, 1), uniform(0.1, 1)};
            double const length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
            double const half[4] = {uniform(0.1, 0.3), uniform(0.3, 0.4), uniform(0.5, 0.6),
                                    uniform(0.6, 0.75)};
            std::vector<typename L::Q>* const lists[4] = {&p, &a, &b, &q};
            for (int k = 0; k < 4; ++k) {
                double const s = std::sin(half[k]) / length;
                double const e[4] = {std::cos(half[k]), n[k % 3] * s, n[(k + 1) % 3] * s, n[(k + 2) % 3] * s};
                add(*lists[k], L::make, e);
                if (k < 3) continue;
                add(forMatrix, L::makeForMatrix, e);
                add(forVector, L::makeForVector, e);
                m.push_back(L::matrix(forMatrix.back()));
            }
            axis.push_back(L::vector(T(n[0] / length), T(n[1] / length), T(n[2] / length)));
            v.push_back(L::vector(T(uniform(-9, 9)), T(uniform(-9, 9)), T(uniform(-9, 9))));
            t.push_back(T(uniform(0.1, 0.9)));
        }
    }
};

std::map<std::string, std::vector<Values>> expected; // by row: what ours gave, which is added first

bool agrees(std::string const& row, std::vector<Values> const& got, double tolerance) {
    auto const [ours, isFirst] = expected.try_emplace(row, got);
    for (std::size_t i = 0; i < got.size() && !isFirst; ++i)
        for (std::size_t k = 0; k < got[i].size(); ++k)
            if (!(std::abs(got[i][k] - ours->second[i][k]) <= tolerance)) return false;
    return true;
}

/// Returns `count` values, which are those of the list again and again.
template <class Q> auto repeated(std::vector<Q> const& list, std::size_t count) {
    auto const all = std::make_shared<std::vector<Q>>();
    for (std::size_t i = 0; i < count; ++i) all->push_back(list[i % list.size()]);
    return all;
}

/// Times the product of fewer and of more rotations than the other rows do. Its results were compared there.
template <class L, class T>
void addProduct(std::string const& library, std::size_t count, std::vector<typename L::Q> const& left,
                std::vector<typename L::Q> const& right) {
    auto const p = repeated(left, count);
    auto const q = repeated(right, count);
    std::string const row = "product_" + std::to_string(count) + (sizeof(T) == 4 ? "/float" : "/double");
    Report::add(row, library, count, [=](benchmark::State& state) {
        std::vector<typename L::Q> out(*p);
        for (auto _ : state) {
            for (std::size_t i = 0; i < count; ++i) out[i] = L::product((*p)[i], (*q)[i]);
            benchmark::DoNotOptimize(out.data());
            benchmark::ClobberMemory();
        }
    });
}

template <class L, class T> void addLibrary(std::string const& library) {
    static Inputs<L, T> const in;
    // `calculate` writes a result, to where the caller has it, and `result` is any of its type.
    auto const add = [&](char const* operation, auto result, auto calculate, auto values) {
        std::string const row = std::string(operation) + (sizeof(T) == 4 ? "/float" : "/double");
        std::vector<Values> results;
        for (std::size_t i = 0; i < COUNT; ++i) {
            calculate(i, result);
            results.push_back(values(result));
        }
        if (!agrees(row, results, sizeof(T) == 4 ? 2e-5 : 1e-13)) {
            std::fprintf(stderr, "%s: %s has other results\n", row.c_str(), library.c_str());
            std::exit(1);
        }
        Report::add(row, library, COUNT, [=](benchmark::State& state) {
            std::vector<decltype(result)> out(COUNT, result);
            for (auto _ : state) {
                for (std::size_t i = 0; i < COUNT; ++i) calculate(i, out[i]);
                benchmark::DoNotOptimize(out.data());
                benchmark::ClobberMemory();
            }
        });
    };
    using Q = typename L::Q;
    using V = typename L::V;
    using M = typename L::M;
    using A = typename L::A;
    auto const any = [](auto const& result) { return L::values(result); };
    add(
        "product", in.p[0], [](std::size_t i, Q& out) { out = L::product(in.p[i], in.q[i]); }, any);
    add(
        "inverse", in.p[0], [](std::size_t i, Q& out) { out = L::inverse(in.p[i]); }, any);
    add(
        "slerp", in.p[0], [](std::size_t i, Q& out) { out = L::slerp(in.t[i], in.p[i], in.q[i]); }, any);
    add(
        "squad", in.p[0],
        [](std::size_t i, Q& out) { out = L::squad(in.t[i], in.p[i], in.a[i], in.b[i], in.q[i]); }, any);
    add(
        "to-matrix", in.m[0], [](std::size_t i, M& out) { L::toMatrix(in.forMatrix[i], out); }, any);
    add(
        "from-matrix", in.p[0], [](std::size_t i, Q& out) { out = L::fromMatrix(in.m[i]); },
        [](auto const& result) { return L::valuesFromMatrix(result); });
    add(
        "vector", in.v[0], [](std::size_t i, V& out) { out = L::rotate(in.forVector[i], in.v[i]); }, any);
    add(
        "from-axis-angle", in.p[0],
        [](std::size_t i, Q& out) { out = L::fromAxisAngle(in.axis[i], in.t[i]); }, any);
    add(
        "to-axis-angle", L::toAxisAngle(in.q[0]),
        [](std::size_t i, A& out) { out = L::toAxisAngle(in.q[i]); }, any);
    for (std::size_t const count : {1000, 100000}) addProduct<L, T>(library, count, in.p, in.q);
}

template <class T> void addPrecision() {
    addLibrary<Ours<T>, T>("ours");
    addLibrary<Lean<T>, T>("floor");
#ifdef BENCH_EIGEN
    addLibrary<EigenPeer<T>, T>("Eigen");
#endif
#ifdef BENCH_GLM
    addLibrary<GlmPeer<T>, T>("glm");
#endif
#ifdef BENCH_IMATH
    addLibrary<ImathPeer<T>, T>("Imath");
#endif
}

} // namespace

int main(int argc, char** argv) {
    addPrecision<double>();
    addPrecision<float>();
    return Report::run("rotations", argc, argv);
}
