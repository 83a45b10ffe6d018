// Geometric queries, singly and for arrays of points of the shape (n, 3).
#include "bindings.h"
#include "Conversions.h"

#include <MRCommon/math/Geometry.h>

#include <vector>

using namespace quarn;

namespace {

/// A point, or n of them.
template <class T> class Points {
public:
    Points(py::object const& argument, char const* name) : numbers_(numbersFrom<T>(argument, name)) {
        bool const one = numbers_.ndim() == 1 && numbers_.shape(0) == 3;
        bool const many = numbers_.ndim() == 2 && numbers_.shape(1) == 3;
        if (!one && !many) throw py::value_error(std::string(name) + " must have the shape (3,) or (n, 3)");
        isArray_ = many;
    }
    bool isArray() const { return isArray_; }
    py::ssize_t size() const { return isArray_ ? numbers_.shape(0) : 1; }
    Vector3<T> operator[](py::ssize_t i) const {
        T const* const c = numbers_.data() + (isArray_ ? 3 * i : 0);
        return {c[0], c[1], c[2]};
    }

private:
    py::array_t<T> numbers_;
    bool isArray_ = false;
};

/// Returns eight corners, of the shape (8, 3).
std::vector<Vector3<float>> cornersFrom(py::object const& argument, char const* name) {
    Points<float> const points(argument, name);
    if (!points.isArray() || points.size() != 8)
        throw py::value_error(std::string(name) + " must have the shape (8, 3)");
    std::vector<Vector3<float>> corners;
    for (py::ssize_t i = 0; i < 8; ++i) corners.push_back(points[i]);
    return corners;
}

/// Returns distances, parameters and closest points: three values, or three arrays for an array of points.
py::tuple minDistance(py::object const& points, py::object const& from, py::object const& to, bool clamp) {
    Points<double> const p(points, "points");
    Vector3<double> a, b;
    fromPython(from, a);
    fromPython(to, b);
    py::ssize_t const size = p.size();
    py::array_t<double> distances(size), parameters(size), closest({size, py::ssize_t(3)});
    double *distance = distances.mutable_data(), *parameter = parameters.mutable_data();
    double* component = closest.mutable_data();
    {
        py::gil_scoped_release const released;
        for (py::ssize_t i = 0; i < size; ++i) {
            Vector3<double> nearest;
            distance[i] = D_minDist(p[i], a, b, clamp, parameter + i, &nearest);
            for (double const value : {nearest.x, nearest.y, nearest.z}) *component++ = value;
        }
    }
    if (p.isArray()) return py::make_tuple(distances, parameters, closest);
    double const* const c = closest.data();
    return py::make_tuple(*distances.data(), *parameters.data(), py::make_tuple(c[0], c[1], c[2]));
}

py::object isInBox(py::object const& points, py::object const& lo, py::object const& hi,
                   py::object const& matrix, py::object const& orientation) {
    Points<float> const p(points, "points");
    Vector3<float> low, high;
    Color4<float> q; // four numbers, here x, y, z, w
    fromPython(lo, low);
    fromPython(hi, high);
    fromPython(orientation, q);
    auto const numbers = numbersFrom<float>(matrix, "matrix");
    if (numbers.ndim() != 2 || numbers.shape(0) != 4 || numbers.shape(1) != 4)
        throw py::value_error("matrix must have the shape (4, 4)");
    Matrix4<float> m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) m(r, c) = numbers.at(r, c);
    Quaternion<float> const rotation(q.r, q.g, q.b, q.a);
    if (!p.isArray()) return py::bool_(IsInBox(p[0], low, high, m, rotation));
    py::array_t<bool> results(p.size());
    bool* const isInside = results.mutable_data();
    {
        py::gil_scoped_release const released;
        for (py::ssize_t i = 0; i < p.size(); ++i) isInside[i] = IsInBox(p[i], low, high, m, rotation);
    }
    return std::move(results);
}

/// Returns None unless exactly two vertices are shared.
py::object crossCheck(py::object const& first, py::object const& second) {
    auto const vertices = [](py::object const& triangle) {
        if (!py::isinstance<py::sequence>(triangle) || py::len(triangle) != 3)
            throw py::type_error("a triangle is a sequence of three vertex numbers");
        std::vector<int> numbers(3);
        for (std::size_t i = 0; i < 3; ++i)
            fromPython(py::object(py::reinterpret_borrow<py::sequence>(triangle)[i]), numbers[i]);
        return numbers;
    };
    std::vector<int> const a = vertices(first), b = vertices(second);
    int opposite = b[0], own = a[0];
    if (!CrossCheck(a[0], a[1], a[2], b[0], b[1], b[2], &opposite, &own)) return py::none();
    return py::make_tuple(own, opposite);
}

} // namespace

void bindGeometry(py::module_& module) {
    module.def("min_distance", &minDistance, py::arg("points"), py::arg("a"), py::arg("b"),
               py::arg("clamp_to_segment") = true,
               R"(Returns how far points are from a segment: (distance, t, closest).

points: (3,) or (n, 3). a, b: (3,), the ends of the segment, or with clamp_to_segment=False two points of a line.
distance is in the unit of the points, t is 0 at a and 1 at b, closest is the nearest point of the segment. For n points
these are arrays of the shapes (n,), (n,) and (n, 3), else two floats and a tuple. All is NaN if a equals b.
TypeError for what is no number, ValueError for another shape.)");
    module.def(
        "box_volume",
        [](py::object const& corners) { return computeBoxVolume(cornersFrom(corners, "corners").data()); },
        py::arg("corners"),
        R"(Returns the volume of the axis-aligned box around eight points, of the shape (8, 3), in single precision.

TypeError for what is no number, ValueError for another shape.)");
    module.def(
        "intersect_volume",
        [](py::object const& a, py::object const& b) {
            return intersectVolume(cornersFrom(a, "a").data(), cornersFrom(b, "b").data());
        },
        py::arg("a"), py::arg("b"),
        R"(Returns the volume that two axis-aligned boxes share, each around eight points of the shape (8, 3).

TypeError for what is no number, ValueError for another shape.)");
    module.def(
        "is_in_box", &isInBox, py::arg("points"), py::arg("lo"), py::arg("hi"), py::arg("matrix"),
        py::arg("orientation"),
        R"(Returns whether points are inside a box, its faces excluded: a bool, or an array of the shape (n,).

points: (3,) or (n, 3), in single precision. lo, hi: (3,), opposite corners in the box's own frame. matrix: (4, 4), for
row vectors, which places the corners. orientation: (4,), a rotation as x, y, z, w, which must agree with the matrix.
TypeError for what is no number, ValueError for another shape.)");
    module.def(
        "cross_check", &crossCheck, py::arg("first"), py::arg("second"),
        R"(Returns (own, opposite), the vertices of two triangles that they do not share, if they share two; else None.

first, second: sequences of three vertex numbers of 32 bits. TypeError and OverflowError for anything else.)");
}
