#include "wire/Codec.h"

#include <QTest>

#include <cmath>

using namespace quorbit;
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
    void wholeNumbers_data() {
        QTest::addColumn<QByteArray>("literal");
        QTest::addColumn<QVariant>("value"); // invalid: the document fails
        const auto row = [](const char *literal, const QVariant &value) {
            QTest::newRow(literal) << QByteArray(literal) << value;
        };
        row("0", 0);
        row("-3", -3);
        row("8080.0", 8080);
        row("1e3", 1000);
        row("9007199254740993", Q_INT64_C(9007199254740993));
        row("9223372036854775807", std::numeric_limits<qint64>::max());
        row("-9223372036854775808", std::numeric_limits<qint64>::min());
        for (const char *bad : {"9223372036854775808", "-9223372036854775809", "18446744073709551616", "1e19",
                                "-1e19", "8080.5", "1e-1", "\"1\"", "true", "null", "[]", "1e400"})
            row(bad, QVariant());
    }
    void wholeNumbers() {
        QFETCH(QByteArray, literal);
        QFETCH(QVariant, value);
        if (value.isValid())
            QCOMPARE(wire::decode<Shape>(shapeWith(literal)).number, value.toLongLong());
        else
            QVERIFY_EXCEPTION_THROWN(wire::decode<Shape>(shapeWith(literal)), wire::DecodeError);
    }

    void numbers() {
        const auto shape = wire::decode<Shape>(shapeWith("1", R"([{"x":1440},{"x":-0.5},{"x":1e300}])"));
        QCOMPARE(shape.points.at(0).x, 1440.0);
        QCOMPARE(shape.points.at(1).x, -0.5);
        QCOMPARE(shape.points.at(2).x, 1e300);
    }

    void failuresSayWhereAndWhat_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QByteArray>("message");
        const auto row = [](const char *name, const QByteArray &json, const char *message) {
            QTest::newRow(name) << json << QByteArray(message);
        };
        row("not an object", "[]", "expected an object");
        row("null", "null", "expected an object");
        row("first of several", "{}", "name: is missing");
        row("null is no string", R"({"name":null})", "name: expected a string");
        row("element", shapeWith("1", R"([{"x":1},{"x":2},{"x":"3"}])"), "points[2].x: expected a number");
        row("optional", shapeWith("1", R"([{"x":1,"note":7}])"), "points[0].note: expected a string");
        row("element of another type", shapeWith("1", "[null]"), "points[0]: expected an object");
        row("map", R"({"name":"s","number":1,"points":[],"named":{"a b":{}}})", "named.a b.x: is missing");
        row("map of another type", R"({"name":"s","number":1,"points":[],"named":[]})",
            "named: expected an object");
        row("number for bool", R"({"name":"s","number":1,"closed":1,"points":[]})",
            "closed: expected true or false");
    }
    void failuresSayWhereAndWhat() {
        QFETCH(QByteArray, json);
        QFETCH(QByteArray, message);
        QCOMPARE(failure(json), message);
    }

    void documentsThatAreNotJson_data() {
        QTest::addColumn<QByteArray>("json");
        const QByteArray good = shapeWith("1");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("page") << QByteArray("<html></html>");
        QTest::newRow("cut off") << good.chopped(1);
        QTest::newRow("more behind it") << good + "}";
        QTest::newRow("bad UTF-8") << QByteArray(good).replace("\"s\"", "\"\xc3(\"");
        QTest::newRow("overlong UTF-8") << QByteArray(good).replace("\"s\"", "\"\xc0\x80\"");
        QTest::newRow("lone surrogate") << QByteArray(good).replace("\"s\"", R"("\ud800")");
        QTest::newRow("not a number") << shapeWith("NaN");
        for (const char *open : {"[", "{\"name\":"}) {
            QTest::addRow("deep %s", open) << QByteArray(open).repeated(100'000);
            QTest::addRow("deep %s, unknown key", open)
                << QByteArray(good).insert(1, "\"deep\":" + QByteArray(open).repeated(100'000) + ",");
        }
        QTest::newRow("deep and closed") << QByteArray(good).insert(
            1, "\"deep\":" + QByteArray(100'000, '[') + QByteArray(100'000, ']') + ",");
    }
    void documentsThatAreNotJson() {
        QFETCH(QByteArray, json);
        QVERIFY_EXCEPTION_THROWN(wire::decode<Shape>(json), wire::DecodeError);
    }

    void encodesInOrderAndLeavesOutWhatIsAbsent() {
        Shape shape;
        shape.name = u"a\"\u00e9\U0001f600\n"_s;
        shape.number = Q_INT64_C(9007199254740993);
        QCOMPARE(
            wire::encode(shape),
            QByteArray("{\"name\":\"a\\\"\u00e9\U0001f600\\n\",\"number\":9007199254740993,\"points\":[]}"));
        shape.closed = false;
        shape.points = {{0.1, u""_s}};
        shape.named.emplace();
        shape.named->emplace(u"b"_s, Point{-2, std::nullopt});
        QCOMPARE(wire::decode<Shape>(wire::encode(shape)), shape);
        shape.points[0].x = std::nan("");
        QVERIFY_EXCEPTION_THROWN(wire::encode(shape), wire::EncodeError);
    }

    void nullIsNoRecord() {
        QVERIFY(!wire::decode<std::optional<Shape>>("null"));
        QVERIFY(wire::decode<std::optional<Shape>>(shapeWith("1")));
        QVERIFY_EXCEPTION_THROWN(wire::decode<std::optional<Shape>>(""), wire::DecodeError);
    }
};

} // namespace

QTEST_GUILESS_MAIN(CodecTest)
#include "CodecTest.moc"
