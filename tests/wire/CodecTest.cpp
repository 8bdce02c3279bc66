#include "wire/Codec.h"
#include "support/Row.h"

#include <cmath>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

struct Point {
    double x = 0;
    std::optional<QString> note;

    static constexpr auto fields() {
        return std::tuple{wire::Field{"x", &Point::x}, wire::Field{"note", &Point::note}};
    }
    bool operator==(const Point &) const = default;
};

struct Shape {
    QString name;
    qint64 number = 0;
    std::optional<bool> closed;
    std::vector<Point> points;
    std::optional<std::map<QString, Point>> named;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"name", &Shape::name}, Field{"number", &Shape::number},
                          Field{"closed", &Shape::closed}, Field{"points", &Shape::points},
                          Field{"named", &Shape::named}};
    }
    bool operator==(const Shape &) const = default;
};

QByteArray failure(QByteArrayView json) {
    try {
        wire::decode<Shape>(json);
    } catch (const wire::DecodeError &error) {
        return error.what();
    }
    return "no failure";
}

QByteArray shapeWith(const QByteArray &number, const QByteArray &points = "[]") {
    return R"({"name":"s","number":)" + number + R"(,"points":)" + points + "}";
}

class CodecTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholeNumbers() {
        const std::pair<const char *, qint64> good[]{
            {"-3", -3},
            {"8080.0", 8080},
            {"9223372036854775807", std::numeric_limits<qint64>::max()},
            {"-9223372036854775808", std::numeric_limits<qint64>::min()}};
        for (const auto &[literal, value] : good) {
            const Row row(literal);
            QCOMPARE(wire::decode<Shape>(shapeWith(literal)).number, value);
        }
        for (const char *bad : {"9223372036854775808", "-9223372036854775809", "18446744073709551616", "1e19",
                                "-1e19", "8080.5", "\"1\"", "true", "null", "1e400", "NaN"}) {
            const Row row(bad);
            QVERIFY_EXCEPTION_THROWN(wire::decode<Shape>(shapeWith(bad)), wire::DecodeError);
        }
        const auto shape = wire::decode<Shape>(shapeWith("1", R"([{"x":1440},{"x":-0.5},{"x":1e300}])"));
        QCOMPARE(shape.points, (std::vector<Point>{{1440, {}}, {-0.5, {}}, {1e300, {}}}));
        QVERIFY(!wire::decode<std::optional<Shape>>("null"));
    }

    void failuresSayWhereAndWhat() {
        const std::pair<QByteArray, const char *> rows[]{
            {"[]", "expected an object"},
            {R"({"name":null})", "name: expected a string"},
            {shapeWith("1", R"([{"x":1},{"x":2},{"x":"3"}])"), "points[2].x: expected a number"},
            {shapeWith("1", R"([{"x":1,"note":7}])"), "points[0].note: expected a string"},
            {R"({"name":"s","number":1,"points":[],"named":{"a b":{}}})", "named.a b.x: is missing"},
            {R"({"name":"s","number":1,"closed":1,"points":[]})", "closed: expected true or false"}};
        for (const auto &[json, message] : rows)
            QCOMPARE(failure(json), QByteArray(message));
    }

    void documentsThatAreNotJson() {
        const QByteArray good = shapeWith("1");
        const QByteArrayList rows{
            "",
            good.chopped(1),
            good + "}",
            QByteArray(good).replace("\"s\"", "\"\xc3(\""),   // not UTF-8
            QByteArray(good).replace("\"s\"", R"("\ud800")"), // half a character
            QByteArray("{\"name\":").repeated(100'000),
            QByteArray(good).insert(1, "\"deep\":" + QByteArray(600, '[') + QByteArray(600, ']') + ',')};
        for (const QByteArray &json : rows) {
            const Row row(json.first(std::min<qsizetype>(json.size(), 60)));
            QVERIFY_EXCEPTION_THROWN(wire::decode<Shape>(json), wire::DecodeError);
        }
    }

    void encodesInOrderAndLeavesOutWhatIsAbsent() {
        Shape shape;
        shape.name = u"a\"\u00e9\U0001f600\n"_s;
        shape.number = Q_INT64_C(9007199254740993);
        QCOMPARE(wire::encode(shape),
                 "{\"name\":\"a\\\"\u00e9\U0001f600\\n\",\"number\":9007199254740993,\"points\":[]}");
        shape.closed = false;
        shape.points = {{0.1, u""_s}};
        shape.named.emplace();
        shape.named->emplace(u"b"_s, Point{-2, std::nullopt});
        QCOMPARE(wire::decode<Shape>(wire::encode(shape)), shape);
        shape.points[0].x = std::nan("");
        QVERIFY_EXCEPTION_THROWN(wire::encode(shape), wire::EncodeError);
    }
};

} // namespace

QTEST_GUILESS_MAIN(CodecTest)
#include "CodecTest.moc"
