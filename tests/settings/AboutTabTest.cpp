#include "settings/about/AboutTab.h"
#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/controls/Button.h"
#include "ui/controls/MenuPicker.h"
#include "update/PlainNetwork.h"
#include "update/UpdateChecker.h"
#include "wording/TimeFormats.h"

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

class AboutTabTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        platform_.version = u"1.4.1"_s;
        useLanguage(u"en"_s);
        useAppearance({}, 9);
    }

    void init() {
        checker_ = std::make_unique<UpdateChecker>(platform_, clock_, QUrl(u"https://host/version.json"_s),
                                                   QStringList{u"en"_s}, plainNetwork(server_));
        show();
    }

    void cleanup() { tab_.reset(); }

    void offersWhatCanBeDone() {
        const QString check = u"Check now"_s;
        const QString title = u"Quorbit 1.5.0 is available"_s;
        AvailableUpdate bare;
        bare.version = u"1.5.0"_s;
        AvailableUpdate whole = bare;
        whole.downloadURL = QUrl(u"https://host/app.dmg"_s);
        const std::tuple<UpdateState, QStringList, QStringList> rows[]{
            {{.state = check::Checking{}}, {}, {u'(' + check + u')'}},
            {{.available = bare}, {title}, {u"(Download)"_s, check}},
            {{.available = whole}, {title}, {check, u"Download"_s}},
            {{.available = whole, .downloadState = DownloadState::downloading},
             {title, u"Downloading…"_s},
             {check}},
            {{.available = whole, .downloadState = DownloadState::done},
             {title, u"Saved in your downloads folder"_s},
             {check}},
            {{.available = whole, .downloadState = DownloadState::failed},
             {title},
             {check, u"Download"_s, u"Open in browser"_s}},
            {{}, {}, {check}}};
        const QStringList usual = textsOf(*tab_);
        for (const auto &[update, more, wanted] : rows) {
            tab_->render(aboutModel(update, {.bundleVersion = u"1.4.1"_s}, formats_));
            QTest::qWait(20);
            const QStringList texts = textsOf(*tab_);
            for (const QString &text : {title, u"Downloading…"_s, u"Saved in your downloads folder"_s})
                QCOMPARE(texts.contains(text), more.contains(text));
            QCOMPARE(buttons(), wanted);
        }
        QCOMPARE(textsOf(*tab_), usual);
    }

    void checksOnceAndOpensOnlyTheBrowser() {
        const auto offer = [this](const QByteArray &address) {
            server_.answer("GET /version.json",
                           {R"({"version":"2.0","download":{"macos":")" + address + R"("}})"});
        };
        const QUrl package(u"https://host/absent.dmg"_s);
        offer(package.toEncoded());
        auto *check = named<Button>(*tab_, u"Check now"_s);
        const int before = check->parentWidget()->height();
        QTest::keyClick(check, Qt::Key_Space);
        QTest::keyClick(check, Qt::Key_Space); // pressed twice by mistake
        QTRY_VERIFY(textsOf(*tab_).contains(u"Quorbit 2.0 is available"_s));
        QCOMPARE(server_.seen.size(), std::size_t{1});
        QTest::qWait(60);
        QCOMPARE(check->parentWidget()->height(), before);

        named<Button>(*tab_, u"Download"_s)->click();
        QTRY_VERIFY(named<Button>(*tab_, u"Open in browser"_s));
        named<Button>(*tab_, u"Open in browser"_s)->click();
        // What would start any other program is not opened.
        for (const char *other :
             {"ssh://host/app.dmg", "file:///etc/hostname", "javascript:app", "https:///app"}) {
            offer(other);
            checker_->check();
            QTRY_COMPARE(checker_->state().available->downloadURL, QUrl(QString::fromLatin1(other)));
            named<Button>(*tab_, u"Open in browser"_s)->click();
        }
        QCOMPARE(opened_, QList<QUrl>{package});
    }

    void languageIsWrittenOnceAndAsksForARestart() {
        auto *picker = named<MenuPicker>(*tab_, u"Interface language"_s);
        QCOMPARE(picker->accessibleText(), u"System"_s); // for what is stored is no choice
        for (const int index : {1, 1, 0, 0}) {
            QCOMPARE(!named<Button>(*tab_, u"Restart now"_s), chosen_.isEmpty());
            Q_EMIT picker->picked(index);
        }
        QCOMPARE(chosen_, QStringList({u"en"_s, QString()}));
        named<Button>(*tab_, u"Restart now"_s)->click();
        QCOMPARE(restarts_, 1);
    }

private:
    void show() {
        const AboutServices services{.languages = {{QString(), u"System"_s}, {u"en"_s, u"English"_s}},
                                     .storedLanguage = [this] { return stored_; },
                                     .chooseLanguage =
                                         [this](const QString &language) {
                                             stored_ = language;
                                             chosen_ << language;
                                         },
                                     .restart = [this] { ++restarts_; },
                                     .openAddress = [this](const QUrl &address) { opened_ << address; }};
        tab_ = std::make_unique<AboutTab>(*checker_, formats_, services, u"1.4.1"_s);
        tab_->resize(560, 640);
        tab_->showState();
        connect(checker_.get(), &UpdateChecker::changed, tab_.get(), &AboutTab::showState);
        openWindow(*tab_);
    }

    /// Those that are seen; in brackets those that cannot be pressed.
    QStringList buttons() const {
        QStringList labels;
        for (const Button *button : tab_->findChildren<Button *>()) {
            if (button->isVisible())
                labels << (button->isEnabled() ? button->label() : u'(' + button->label() + u')');
        }
        labels.sort();
        return labels;
    }

    FakeService server_;
    const TimeFormats formats_{QLocale(QLocale::English)};
    FakePlatform platform_;
    FakeClock clock_;
    QString stored_ = u"fr"_s;
    QStringList chosen_;
    QList<QUrl> opened_;
    int restarts_ = 0;
    std::unique_ptr<UpdateChecker> checker_;
    std::unique_ptr<AboutTab> tab_;
};

int main(int argc, char **argv) {
    return runViewTest<AboutTabTest>(argc, argv);
}
#include "AboutTabTest.moc"
