// Quaternions in both precisions, singly and in arrays: an array of n quaternions has the shape (n, 4).
#include "bindings.h"
#include "Conversions.h"

#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/Quat.h>

#include <string>
#include <type_traits>
#include <utility>

using namespace quarn;

namespace {

template <class Q> using ElementOf = std::decay_t<decltype(std::declval<Q const&>().X())>;

/// The quaternions of an argument: one for all keys, or one for each.
template <class Q> class Keys {
public:
    Keys(py::object const& argument, char const* name) {
        if (py::isinstance<Q>(argument)) {
            single_ = argument.cast<Q const&>();
            return;
        }
        array_ = numbersFrom<ElementOf<Q>>(argument, name);
        bool const one = array_.ndim() == 1 && array_.shape(0) == 4;
        bool const many = array_.ndim() == 2 && array_.shape(1) == 4;
        if (!one && !many) throw py::value_error(std::string(name) + " must have the shape (4,) or (n, 4)");
        if (one) single_ = at(0);
        isArray_ = many;
    }

    bool isArray() const { return isArray_; }
    py::ssize_t size() const { return isArray_ ? array_.shape(0) : 1; }
    Q operator[](py::ssize_t i) const { return isArray_ ? at(i) : single_; }

private:
    Q at(py::ssize_t i) const {
        ElementOf<Q> const* const e = array_.data() + 4 * i;
        return Q(e[0], e[1], e[2], e[3]);
    }

    Q single_;
    py::array_t<ElementOf<Q>> array_;
    bool isArray_ = false;
};

/// The parameters of an interpolation: one for all keys, or one for each.
class Times {
public:
    explicit Times(py::object const& argument) : array_(numbersFrom<double>(argument, "t")) {
        if (array_.ndim() > 1) throw py::value_error("t must be a number or have the shape (n,)");
    }
    bool isArray() const { return array_.ndim() == 1; }
    py::ssize_t size() const { return array_.size(); }
    double operator[](py::ssize_t i) const { return array_.data()[isArray() ? i : 0]; }

private:
    py::array_t<double> array_;
};

/// Returns the common length of all array arguments, -1 without any; ValueError if they differ.
template <class... Arguments> py::ssize_t commonSize(Arguments const&... arguments) {
    py::ssize_t size = -1;
    auto const agree = [&](auto const& argument) {
        if (!argument.isArray()) return;
        if (size >= 0 && size != argument.size()) throw py::value_error("arrays of different lengths");
        size = argument.size();
    };
    (agree(arguments), ...);
    return size;
}

/// Returns one result per key as an (n, 4) array, or a single quaternion if no argument is an array.
template <class Q, class Calculate, class... Arguments>
py::object forEachKey(Calculate const& calculate, Arguments const&... arguments) {
    py::ssize_t const size = commonSize(arguments...);
    if (size < 0) return py::cast(calculate(arguments[0]...));
    py::array_t<ElementOf<Q>> results({size, py::ssize_t(4)});
    ElementOf<Q>* out = results.mutable_data();
    {
        py::gil_scoped_release const released;
        for (py::ssize_t i = 0; i < size; ++i) {
            Q const result = calculate(arguments[i]...);
            for (int e = 0; e < 4; ++e) *out++ = result[e];
        }
    }
    return std::move(results);
}

template <class M> M matrixFrom(py::array_t<double> const& numbers, int size) {
    M m;
    for (int r = 0; r < size; ++r)
        for (int c = 0; c < size; ++c)
            m(r, c) = static_cast<std::decay_t<decltype(m(0, 0))>>(numbers.at(r, c));
    return m;
}

template <class M, class T> py::array matrixToPython(M const& m, int size) {
    py::array_t<T> array({py::ssize_t(size), py::ssize_t(size)});
    for (int r = 0; r < size; ++r)
        for (int c = 0; c < size; ++c) array.mutable_at(r, c) = m(r, c);
    return std::move(array);
}

template <class Q> Q fromMatrix(py::object const& matrix) {
    auto const array = numbersFrom<double>(matrix, "matrix");
    if (array.ndim() != 2 || array.shape(0) != array.shape(1) || (array.shape(0) != 3 && array.shape(0) != 4))
        throw py::value_error("a matrix of the shape (3, 3) or (4, 4) expected");
    if (array.shape(0) == 3) {
        auto m = matrixFrom<Matrix3<double>>(array, 3);
        return Q(&m);
    }
    auto m = matrixFrom<Matrix4<ElementOf<Q>>>(array, 4);
    return Q(&m);
}

template <class Q> py::array toMatrix(Q const& q, int size) {
    if (size == 3) {
        Matrix3<double> m;
        q.QuatToMatrix(&m);
        return matrixToPython<Matrix3<double>, double>(m, 3);
    }
    if (size != 4) throw py::value_error("the size of a matrix is 3 or 4");
    Matrix4<ElementOf<Q>> m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) m(r, c) = r == c ? 1 : 0;
    q.QuatToMatrix(&m);
    return matrixToPython<Matrix4<ElementOf<Q>>, ElementOf<Q>>(m, 4);
}

template <class Q> void bindQuaternion(py::module_& module, char const* name, char const* documentation) {
    using T = ElementOf<Q>;
    py::class_<Q> type(module, name, documentation);
    type.def(py::init<>(), "Makes (0, 0, 1, 0), as in the library: neither IDENTITY nor ZERO.")
        .def(py::init(
            [](py::object const& e0, py::object const& e1, py::object const& e2, py::object const& e3) {
                return Q(valueFrom<T>(e0), valueFrom<T>(e1), valueFrom<T>(e2), valueFrom<T>(e3));
            }))
        .def_property_readonly(
            "elements",
            [](py::object const& self) {
                Q& q = self.cast<Q&>();
                return py::array_t<T>({4}, {sizeof(T)}, static_cast<T*>(q), self);
            },
            "The four elements, as a numpy array of the shape (4,) that shares the quaternion's memory.")
        .def("__getitem__",
             [](Q const& q, int i) {
                 if (i < -4 || i > 3) throw py::index_error("a quaternion has four elements");
                 return q[i < 0 ? i + 4 : i];
             })
        .def("__setitem__",
             [](Q& q, int i, py::object const& value) {
                 if (i < -4 || i > 3) throw py::index_error("a quaternion has four elements");
                 q[i < 0 ? i + 4 : i] = valueFrom<T>(value);
             })
        .def("__len__", [](Q const&) { return 4; })
        .def("__iter__", [](Q const& q) { return py::iter(py::make_tuple(q[0], q[1], q[2], q[3])); })
        .def(
            "__eq__", [](Q const& a, Q const& b) { return a == b; }, py::is_operator())
        .def(
            "__ne__", [](Q const& a, Q const& b) { return a != b; }, py::is_operator())
        .def(
            "__add__", [](Q const& a, Q const& b) { return a + b; }, py::is_operator())
        .def(
            "__sub__", [](Q const& a, Q const& b) { return a - b; }, py::is_operator())
        .def("__neg__", [](Q const& a) { return -a; })
        .def(
            "__mul__", [](Q const& a, Q const& b) { return a * b; }, py::is_operator())
        .def(
            "__mul__", [](Q const& a, double s) { return a * static_cast<T>(s); }, py::is_operator())
        .def(
            "__rmul__", [](Q const& a, double s) { return a * static_cast<T>(s); }, py::is_operator())
        .def(
            "__truediv__", [](Q const& a, double s) { return a / static_cast<T>(s); }, py::is_operator())
        .def("__repr__",
             [name](Q const& q) {
                 py::object const written = py::module_::import("mrcommon.properties").attr("_written");
                 return name + std::string(py::str(written(py::make_tuple(q[0], q[1], q[2], q[3]))));
             })
        .def("__reduce__",
             [](py::object const& self) {
                 auto const& q = self.cast<Q const&>();
                 return py::make_tuple(py::type::of(self), py::make_tuple(q[0], q[1], q[2], q[3]));
             })
        .def(
            "dot", [](Q const& a, Q const& b) { return a.Dot(b); }, py::arg("other"),
            "Returns the sum of the products of like elements.")
        .def(
            "inverse", [](Q const& q) { return q.getInverse(); }, "Returns the inverse; ZERO for ZERO.")
        .def(
            "conjugate", [](Q const& q) { return q.Conjugate(); },
            "Returns the quaternion with elements 1 to 3 negated.")
        .def(
            "exp", [](Q const& q) { return q.Exp(); }, "Returns the exponential; element 0 is not used.")
        .def(
            "log", [](Q const& q) { return q.Log(); }, "Returns the logarithm, whose element 0 is 0.")
        .def(
            "to_axis_angle",
            [](Q const& q) {
                Vector3<T> axis(0, 0, 0);
                T angle = 0;
                q.ToAxisAngle(axis, angle);
                return py::make_tuple(toPython(axis), angle);
            },
            "Returns (axis, angle) of a unit quaternion: a unit vector and radians. Without rotation, angle "
            "0 about x.")
        .def("to_matrix", &toMatrix<Q>, py::arg("size") = 3,
             R"(Returns the rotation matrix of the shape (size, size).

As in the library, size 3 takes element 0 for the scalar part; the matrix is for column vectors from a DQuat, for row
vectors from a Quat. Size 4 takes element 3, and the matrix is for row vectors. ValueError for another size.)")
        .def_static(
            "from_axis_angle",
            [](py::object const& axis, py::object const& angle) {
                return Q(valueFrom<Vector3<T>>(axis), valueFrom<T>(angle));
            },
            py::arg("axis"), py::arg("angle"),
            R"(Returns the rotation by `angle` radians about `axis`, of the shape (3,), which should be a unit vector.

TypeError for what is no number, OverflowError for one that does not fit and ValueError for another shape.)")
        .def_static("from_matrix", &fromMatrix<Q>, py::arg("matrix"),
                    R"(Returns the rotation of a matrix: (3, 3) for column vectors or (4, 4) for row vectors.

Element 0 is the scalar part in the first case, element 3 in the second. ValueError for another shape.)")
        .def_static(
            "slerp",
            [](py::object const& t, py::object const& p, py::object const& q) {
                return forEachKey<Q>(
                    [](double at, Q const& a, Q const& b) { return Q::Slerp(static_cast<T>(at), a, b); },
                    Times(t), Keys<Q>(p, "p"), Keys<Q>(q, "q"));
            },
            py::arg("t"), py::arg("p"), py::arg("q"),
            R"(Returns the rotation at t between p (t = 0) and q (t = 1), on the arc between them.

t is a number or an array of the shape (n,); p and q are quaternions or arrays of the shape (4,) or (n, 4). With an array
of n among them the result is an (n, 4) array, bit for bit what n single calls give; else it is a quaternion.
TypeError for what is no number, ValueError for other shapes and different n.)")
        .def_static(
            "slerp_extra_spins",
            [](py::object const& t, py::object const& p, py::object const& q, py::object const& spins) {
                return forEachKey<Q>(
                    [count = valueFrom<int>(spins)](double at, Q const& a, Q const& b) {
                        return Q::SlerpExtraSpins(static_cast<T>(at), a, b, count);
                    },
                    Times(t), Keys<Q>(p, "p"), Keys<Q>(q, "q"));
            },
            py::arg("t"), py::arg("p"), py::arg("q"), py::arg("spins"),
            "As slerp, with `spins` half circles more on the way; an odd number of them ends at -q.")
        .def_static(
            "intermediate",
            [](py::object const& a, py::object const& b, py::object const& c) {
                return forEachKey<Q>(
                    [](Q const& u, Q const& v, Q const& w) { return Q::GetIntermediate(u, v, w); },
                    Keys<Q>(a, "a"), Keys<Q>(b, "b"), Keys<Q>(c, "c"));
            },
            py::arg("a"), py::arg("b"), py::arg("c"),
            "Returns the inner control point for squad at b, on the way from a to c; arrays as in slerp.")
        .def_static(
            "squad",
            [](py::object const& t, py::object const& p, py::object const& a, py::object const& b,
               py::object const& q) {
                return forEachKey<Q>([](double at, Q const& u, Q const& v, Q const& w,
                                        Q const& x) { return Q::Squad(static_cast<T>(at), u, v, w, x); },
                                     Times(t), Keys<Q>(p, "p"), Keys<Q>(a, "a"), Keys<Q>(b, "b"),
                                     Keys<Q>(q, "q"));
            },
            py::arg("t"), py::arg("p"), py::arg("a"), py::arg("b"), py::arg("q"),
            "Returns the spherical cubic at t from p to q with the inner control points a and b; arrays as "
            "in slerp.");
    // Copies, since quaternions can be changed. pybind11 drops the documentation of static properties.
    type.def_property_readonly_static("IDENTITY", [](py::object const&) { return Q::IDENTITY; });
    type.def_property_readonly_static("ZERO", [](py::object const&) { return Q::ZERO; });
    type.attr("__array_ufunc__") = py::none(); // a numpy number times a quaternion is a quaternion
}

} // namespace

void bindRotations(py::module_& module) {
    bindQuaternion<DQuat>(
        module, "DQuat",
        R"(A rotation as a quaternion of four doubles: DQuat(e0, e1, e2, e3); e0 is the scalar part.

IDENTITY is (1, 0, 0, 0) and ZERO (0, 0, 0, 0). TypeError for what is no number.)");
    bindQuaternion<Quat>(module, "Quat", "As DQuat, IDENTITY and ZERO included, in single precision.");
}
