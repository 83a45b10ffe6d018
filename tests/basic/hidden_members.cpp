// A plug-in that calls the inline members of the header-only classes. Compiled without optimisation and without
// hidden visibility, it must export none of them; hidden_members.sh looks.
#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/ArrayFlags.h>
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/ErrorItem.h>
#include <MRCommon/basic/GridConnections.h>
#include <MRCommon/basic/Limits.h>
#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/TriangleFlags.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/host/MessageNames.h>
#include <MRCommon/streams/StreamEncoding.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <utility>

using namespace quarn;

namespace {

/// Makes the compiler emit the constant itself.
template <class T> T const* addressOf(T const& constant) { return &constant; }

template <class List> void useContainer(List list) {
    List copy(list), moved(std::move(list)), none;
    none = copy;
    copy = std::move(moved);
    copy.assign(none);
    copy.push_back(none[0]);
    copy.reserve(copy.capacity() + copy.size(), true);
    for (auto& element : copy) element = *std::as_const(copy).begin();
    copy.setSize(copy.empty() ? 0 : static_cast<unsigned int>(copy.end() - copy.data()));
}

template <class T> void useVector(Vector3<T> v) {
    v += (v - v.cross(v) * v.length() + v.dot(v) * -v);
    v -= v + v;
    v *= v[0];
    if (v == v && !(v != v)) v[1] = std::as_const(v)[2];
}

template <class Tuple> void useTuple(Tuple tuple) {
    Tuple copy(tuple), moved(std::move(tuple)), none;
    none = copy;
    copy = std::move(moved);
}

template <class Stream> void useStream(std::FILE* file) {
    Stream stream(file);
    Array<QN_String> list;
    encoding::writeStrArray(stream, list);
    encoding::writeI32(stream, encoding::readI32(stream));
    stream >> list;
    if (stream.failed()) stream.write(stream.file(), 0);
}

} // namespace

extern "C" int useEverything(std::FILE* file, int i) {
    useContainer(Array<int>{1, 2});
    useContainer(Array<Vector3<float>>{Vector3<float>(1, 2, 3)});
    useContainer(Array<QN_String>{"a", "b"});
    useContainer(QN_String("text"));
    useVector(Vector3<float>(1, 2, 3));
    useVector(Vector3<double>(1, 2, 3));
    useTuple(Tuple2<QN_String, int>("a", 1));
    useTuple(Tuple3<QN_String, QN_String, QN_String>("a", "b", "c"));
    useTuple(ErrorItem{1, 2, 3, "a"});
    useStream<FileStreamRaw>(file);
    useStream<FileStreamEndian>(file);

    Array<QN_String> tokens;
    QN_String text;
    text.format("%d", i).tokenize(',', tokens);
    bool const compared =
        text == tokens[0] || text < tokens[0] || text != tokens[0] || text == "a" || text != "a";
    Tuple2<QN_String, int> const pair("a", i), other;
    Color4<float> const black, white(1, 1, 1, 1);
    bool const equal = pair == other || pair != other || black == white || black != white;
    Matrix3<double> three;
    three(0, i) = 1;
    Matrix4<float> four;
    four(0, i) = 1;
    TupleN<4, float> plain{};
    plain[0] = *plain.data();
    Quaternion<double> const q(0, 0, 0, 1);
    Tuple3<double, double, double> angles(0, 0, 0);
    q.getAngles(PERMUTATION_XYZ_012, angles);
    QN_MetaClassBase const& root = metaClass_QN_Class;
    bool const odd = compared != equal || *three.data() > 0 || *four.data() > 0 || angles[i] > 0 ||
                     root.classSchema() + root.classId() + root.className().size() == 1;

    void const* const constants[] = {
        addressOf(ARRAY_TYPEABLE_COPY_MASK),  addressOf(EICF_INFO),
        addressOf(GRID3_CONNECTION_MASK),     addressOf(GRID3_CONNECTION_MASK_BOX_CORNER),
        addressOf(GRID3_CONNECTION_Xn_Yo_Zp), addressOf(constants::f::MX_MX_MX_MX),
        addressOf(triangleFlags_2SIDED),      addressOf(mr_mesgs::WAVE_TYPE_CAP_NAME)};
    return constants[i] == nullptr || odd ? 1 : 0;
}
