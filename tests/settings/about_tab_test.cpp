#include "settings/AboutTab.h"
#include "settings/TimeFormats.h"
#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Button.h"
#include "ui/MenuPicker.h"
#include "ui/ProgressIndicator.h"
#include "update/HttpsServer.h"
#include "update/TestAuthority.h"
#include "update/UpdateChecker.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

AvailableUpdate release(const QString &notes) {
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    update.releaseNotesText = notes;
    return update;
}

} // namespace

class AboutTabTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const TestAuthority authority;
        trust(authority.certificate());
        server_ = std::make_unique<HttpsServer>(authority.identity(u"localhost"_s));
        platform_.version = u"1.4.1"_s;
        platform_.downloads = downloads_.path();
    }

    void init() {
        useLanguage("en"_L1);
        useAppearance({}, 9);
        stored_.clear();
        checker_ = std::make_unique<UpdateChecker>(platform_, clock_, server_->address(u"/version.json"_s),
                                                   QStringList{u"en"_s});
    }

    void cleanup() {
        tab_.reset();
        checker_.reset();
    }

    void showsWhatTheCheckerKnows() {
        const QDateTime checked(QDate(2026, 11, 22), QTime(9, 41));
        const QString last = u"Last checked: "_s + formats_.dateTime(checked);
        const QString title = u"Quorbit 1.5.0 is available"_s;
        const QString downloading = u"Downloading…"_s;
        const QString saved = u"Saved in your downloads folder"_s;
        const QString check = u"Check now"_s;
        const AvailableUpdate bare = release({});
        AvailableUpdate whole = release(u"Fixes.\nMore <b>fixes</b>."_s);
        whole.downloadURL = QUrl(u"https://host/app.dmg"_s);
        const auto failed = [](FailureReason reason) { return UpdateState{.state = check::Failed{reason}}; };
        const std::tuple<UpdateState, QStringList, QStringList> rows[]{
            {{}, {u"Not checked yet"_s, u"Version 1.4.1"_s}, {check}},
            {{.state = check::Checking{}}, {u"Checking for updates…"_s}, {u'(' + check + u')'}},
            {{.state = check::UpToDate{u"1.4.1"_s}, .lastChecked = checked},
             {u"Quorbit 1.4.1 is up to date"_s, last},
             {check}},
            {failed(FailureReason::unknown), {u"The check failed. Try again later."_s}, {check}},
            {failed(FailureReason::server),
             {u"The update server had a problem. Try again later."_s},
             {check}},
            {failed(FailureReason::parse),
             {u"The server's reply was unreadable. Try again later."_s},
             {check}},
            {{.available = whole, .state = check::Failed{FailureReason::network}, .lastChecked = checked},
             {u"Cannot reach the update server. Check your network."_s, title, u"You have 1.4.1"_s,
              *whole.releaseNotesText, last},
             {check, u"Download"_s}},
            {{.available = bare, .state = check::Available{bare}}, {title}, {u"(Download)"_s, check}},
            {{.available = whole, .downloadState = DownloadState::downloading},
             {title, downloading},
             {check}},
            {{.available = whole, .downloadState = DownloadState::done}, {title, saved}, {check}},
            {{.available = whole, .downloadState = DownloadState::failed},
             {title},
             {check, u"Download"_s, u"Open in browser"_s}}};
        show();
        for (const auto &[update, shown, wanted] : rows) {
            // From another state, so that nothing of that is left.
            const AvailableUpdate other = release(u"other"_s);
            tab_->render(model({other, check::Available{other}, {}, DownloadState::downloading}));
            tab_->render(model(update));
            QTest::qWait(20);
            const QStringList texts = textsOf(*tab_);
            for (const QString &text : shown)
                QVERIFY2(texts.contains(text), qPrintable(text));
            for (const QString &text : {title, downloading, saved, last, u"other"_s})
                QVERIFY2(texts.contains(text) == shown.contains(text), qPrintable(text));
            QCOMPARE(buttons(), wanted);
        }
    }

    void checksDownloadsAndOpensTheBrowser() {
        const QUrl package = server_->address(u"/pkg/app.dmg"_s);
        const auto offer = [this](const QByteArray &address) {
            server_->answer(u"/version.json"_s,
                            reply(200, R"({"version":"2.0","download":{"macos":")" + address + R"("}})"));
        };
        offer(package.toEncoded());
        show({});
        QVERIFY(!textsOf(*tab_).contains(u"Version 1.4.1"_s));
        auto *check = named<Button>(*tab_, u"Check now"_s);
        check->setFocus();
        const int before = check->parentWidget()->height();
        QTest::keyClick(check, Qt::Key_Space);
        QVERIFY(!check->isEnabled() && check->findChild<ProgressIndicator *>());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space); // pressed twice by mistake
        QTRY_VERIFY(textsOf(*tab_).contains(u"Quorbit 2.0 is available"_s));
        QCOMPARE(server_->requests.size(), 1);
        QVERIFY(check->hasFocus());
        QTest::qWait(60);
        QCOMPARE(check->parentWidget()->height(), before);

        named<Button>(*tab_, u"Download"_s)->click();
        QTRY_VERIFY(named<Button>(*tab_, u"Open in browser"_s));
        named<Button>(*tab_, u"Open in browser"_s)->click();
        QCOMPARE(opened_, QList<QUrl>{package});
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
        stored_ = u"fr"_s;
        show();
        auto *picker = named<MenuPicker>(*tab_, u"Interface language"_s);
        QCOMPARE(picker->accessibleText(), u"Same as system"_s);
        const QString prompt = u"Restart Quorbit to use the new language."_s;
        const QString hint = u"Quorbit follows your computer's language unless you choose one here."_s;
        QVERIFY(textsOf(*tab_).contains(hint) && !textsOf(*tab_).contains(prompt));

        for (const int index : {2, 2, 0, 0})
            Q_EMIT picker->picked(index);
        QCOMPARE(chosen_, QStringList({u"en"_s, QString()}));
        QCOMPARE(picker->accessibleText(), u"Same as system"_s);
        QVERIFY(!textsOf(*tab_).contains(hint) && textsOf(*tab_).contains(prompt));
        named<Button>(*tab_, u"Restart now"_s)->click();
        QCOMPARE(restarts_, 1);

        show(); // a tab built afresh
        QVERIFY(!textsOf(*tab_).contains(prompt));
    }

    void everythingFitsAndIsPaintedOnce_data() { addLooks({9.0, 12.5, 16.0}); }
    void everythingFitsAndIsPaintedOnce() {
        useLook();
        show();
        const AvailableUpdate update = release(u"Many fixes. "_s.repeated(30) + u"\nAnd more."_s);
        for (const DownloadState download :
             {DownloadState::downloading, DownloadState::done, DownloadState::failed}) {
            AboutModel shown = model(
                {update, check::Failed{FailureReason::network}, QDateTime::currentDateTime(), download});
            shown.isRestartPending = download == DownloadState::failed;
            tab_->render(shown);
            QTRY_COMPARE(firstCut(*tab_), QString());
            QTest::qWait(60);
            PaintWatch watch;
            tab_->render(shown);
            if (download != DownloadState::downloading) // when something turns
                QCOMPARE(watch.painted(), QSet<QWidget *>());
        }
    }

private:
    void show(std::optional<QString> version = u"1.4.1"_s) {
        AboutServices services;
        services.languages = {{QString(), qtTrId("about.language.system")},
                              {u"zh-Hans"_s, qtTrId("about.language.zh")},
                              {u"en"_s, qtTrId("about.language.en")}};
        services.storedLanguage = [this] { return stored_; };
        services.chooseLanguage = [this](const QString &language) {
            stored_ = language;
            chosen_ << language;
        };
        services.restart = [this] { ++restarts_; };
        services.openAddress = [this](const QUrl &address) { opened_ << address; };
        tab_ = std::make_unique<AboutTab>(*checker_, formats_, services, std::move(version));
        tab_->resize(560, 640);
        tab_->refresh();
        connect(checker_.get(), &UpdateChecker::changed, tab_.get(), &AboutTab::refresh);
        openWindow(*tab_);
    }

    AboutModel model(const UpdateState &update) const {
        return aboutModel(update, {.bundleVersion = u"1.4.1"_s, .currentVersion = u"1.4.1"_s}, formats_);
    }

    QStringList buttons() const {
        QStringList labels;
        for (const Button *button : tab_->findChildren<Button *>()) {
            if (button->isVisible())
                labels << (button->isEnabled() ? button->label() : u'(' + button->label() + u')');
        }
        labels.sort();
        return labels;
    }

    std::unique_ptr<HttpsServer> server_;
    QTemporaryDir downloads_;
    const TimeFormats formats_{QLocale(QLocale::English)};
    FakePlatform platform_;
    FakeClock clock_;
    QString stored_;
    QStringList chosen_;
    QList<QUrl> opened_;
    int restarts_ = 0;
    std::unique_ptr<UpdateChecker> checker_;
    std::unique_ptr<AboutTab> tab_;
};

int main(int argc, char **argv) {
    return runViewTest<AboutTabTest>(argc, argv);
}
#include "about_tab_test.moc"
