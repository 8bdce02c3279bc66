#include "ui/Spring.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace quorbit;

class SpringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void movesAsItsEquationSays() {
        // The same movement, added up in small steps: x'' = -k x - c x'.
        constexpr double response = 0.3;
        constexpr double damping = 0.8;
        const double natural = 2 * M_PI / response;
        double offset = -1;
        double velocity = 0;
        Spring spring(response, damping);
        spring.setTarget(1);
        double most = 0;
        for (int frame = 1; frame <= 40; ++frame) {
            for (int step = 0; step < 10000; ++step) {
                velocity += (-natural * natural * offset - 2 * damping * natural * velocity) * 1e-6;
                offset += velocity * 1e-6;
            }
            spring.advance(0.01);
            QVERIFY2(std::abs(spring.value() - (1 + offset)) < 0.003, qPrintable(QString::number(frame)));
            most = std::max(most, spring.value());
            if (frame == 12) { // turns round without a jump
                const double value = spring.value();
                spring.setTarget(0);
                QCOMPARE(spring.value(), value);
                spring.setTarget(1);
            }
        }
        QVERIFY(most > 1.01 && most < 1.02);
        spring.advance(10);
        QVERIFY(spring.isAtRest());
        QCOMPARE(spring.value(), 1);
    }
};

QTEST_APPLESS_MAIN(SpringTest)
#include "spring_test.moc"
