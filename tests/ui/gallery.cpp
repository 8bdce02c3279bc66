// Draws every control in its states into PNG files, to be looked at beside the design pictures:
//   gallery --out DIR [--chinese] [--large]     with QT_QPA_PLATFORM=offscreen and QT_SCALE_FACTOR=1 or 2
#include "ui/Alert.h"
#include "ui/Button.h"
#include "ui/Card.h"
#include "ui/ControlStyle.h"
#include "ui/Divider.h"
#include "ui/Form.h"
#include "ui/FormRow.h"
#include "ui/FormSection.h"
#include "ui/HoverRow.h"
#include "ui/IconLabel.h"
#include "ui/MenuPicker.h"
#include "ui/ProgressIndicator.h"
#include "ui/SegmentedPicker.h"
#include "ui/SelectableText.h"
#include "ui/Sheet.h"
#include "ui/StatusDot.h"
#include "ui/Stepper.h"
#include "ui/Switch.h"
#include "ui/Symbol.h"
#include "ui/SymbolLabel.h"
#include "ui/TabBar.h"
#include "ui/TextField.h"
#include "ui/TextLabel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

/// What the pictures say, in one of two languages.
class Texts {
public:
    explicit Texts(bool chinese) : chinese_(chinese) {}
    QString operator()(const char16_t *latin, const char16_t *chinese) const {
        return QString::fromUtf16(chinese_ ? chinese : latin);
    }

private:
    bool chinese_;
};

QWidget *row(std::initializer_list<QWidget *> widgets, int spacing = 8, bool stretch = true) {
    auto *holder = new QWidget;
    auto *layout = new QHBoxLayout(holder);
    layout->setContentsMargins({});
    layout->setSpacing(spacing);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    if (stretch)
        layout->addStretch();
    return holder;
}

HoverRow *historyRow(const QString &symbol, const QString &text, const QString &source) {
    auto *button = new HoverRow;
    button->setAccessibleName(text);
    auto *layout = new QHBoxLayout(button);
    layout->setContentsMargins(12, 4, 12, 4);
    layout->setSpacing(10);
    auto *icon = new SymbolLabel(symbol, 16);
    layout->addWidget(icon);
    auto *label = new TextLabel(text, TextStyle::body, TextColor::primary);
    label->setOverflow(TextLabel::Overflow::cutMiddle);
    layout->addWidget(label, 1);
    auto *origin = new TextLabel(source, TextStyle::caption, TextColor::tertiary);
    origin->setOverflow(TextLabel::Overflow::keep);
    layout->addWidget(origin);
    button->setMinimumHeight(38);
    return button;
}

QWidget *panelRow(const QString &symbol, const QString &text, TextStyle style, TextColor color,
                  QWidget *trailing) {
    auto *holder = new QWidget;
    auto *layout = new QHBoxLayout(holder);
    layout->setContentsMargins(16, 4, 16, 4);
    layout->setSpacing(8);
    auto *icon = new SymbolLabel(symbol, 15);
    icon->setColumnWidth(14);
    layout->addWidget(icon);
    layout->addWidget(new TextLabel(text, style, color), 1);
    if (trailing != nullptr)
        layout->addWidget(trailing);
    return holder;
}

class Gallery {
public:
    Gallery(QString out, bool chinese, QString suffix)
        : out_(std::move(out)), t_(chinese), suffix_(std::move(suffix)) {}

    void draw() {
        save(*panel(), u"panel"_s);
        save(*overview(), u"overview"_s);
        save(*sync(), u"sync"_s);
        save(*behaviour(), u"behaviour"_s);
        save(*about(), u"about"_s);
        save(*buttons(), u"buttons"_s);
        save(*symbols(), u"symbols"_s);
        saveSheet();
        saveAlert();
        saveMenu();
    }

private:
    void save(QWidget &widget, const QString &name) {
        widget.ensurePolished();
        widget.show();
        QApplication::processEvents();
        widget.activateWindow();
        QApplication::processEvents();
        if (auto *focused = widget.findChild<QWidget *>(u"focused"_s))
            focused->setFocus(Qt::TabFocusReason);
        for (auto *hover : widget.findChildren<HoverRow *>(u"lit"_s)) {
            QEnterEvent enter{QPointF(), QPointF(), QPointF()};
            QApplication::sendEvent(hover, &enter);
        }
        QApplication::processEvents();
        const QString path = QDir(out_).filePath(name + suffix_ + u".png"_s);
        if (!widget.grab().save(path))
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        widget.hide();
    }

    std::unique_ptr<QWidget> window(int current, Form *form, QSize size) const {
        auto result = std::make_unique<QWidget>();
        auto *column = new QVBoxLayout(result.get());
        column->setContentsMargins({});
        column->setSpacing(0);
        auto *tabs = new TabBar;
        tabs->setChoices({{t_(u"Overview", u"概览"), u"info.circle"_s},
                          {t_(u"Sync", u"同步"), u"arrow.triangle.2.circlepath"_s},
                          {t_(u"KVM", u"键鼠共享"), u"rectangle.connected.to.line.below"_s},
                          {t_(u"Devices", u"设备"), u"laptopcomputer.and.iphone"_s},
                          {t_(u"About", u"关于"), u"questionmark.circle"_s}});
        tabs->setCurrent(current);
        column->addWidget(tabs);
        column->addWidget(form, 1);
        result->resize(size);
        return result;
    }

    std::unique_ptr<QWidget> panel() const {
        auto result = std::make_unique<QWidget>();
        result->setFixedWidth(320);
        auto *column = new QVBoxLayout(result.get());
        column->setContentsMargins(0, 8, 0, 8);
        column->setSpacing(0);
        auto *header = new QHBoxLayout;
        header->setContentsMargins(16, 4, 16, 4);
        header->setSpacing(10);
        header->addWidget(new SymbolLabel(u"checkmark.circle.fill"_s, 19, TextColor::green));
        auto *names = new QVBoxLayout;
        names->setSpacing(1);
        names->addWidget(new TextLabel(t_(u"Quorbit", u"Quorbit"), TextStyle::headline, TextColor::primary));
        names->addWidget(
            new TextLabel(t_(u"Studio Mac", u"工作室电脑"), TextStyle::caption, TextColor::secondary));
        header->addLayout(names, 1);
        column->addLayout(header);
        column->addSpacing(2);
        column->addWidget(new Divider);
        const auto connected = [&] {
            return new TextLabel(t_(u"Connected", u"已连接"), TextStyle::caption, TextColor::green);
        };
        const auto body = TextStyle::body;
        const auto caption = TextStyle::caption;
        column->addWidget(panelRow(u"laptopcomputer"_s, t_(u"Travel laptop", u"出差笔记本"), body,
                                   TextColor::primary, connected()));
        column->addWidget(
            panelRow(u"pc"_s, t_(u"Office Linux", u"办公室电脑"), body, TextColor::primary, connected()));
        column->addWidget(panelRow(u"clock"_s,
                                   t_(u"Received text from Office Linux", u"从办公室电脑收到文字"), caption,
                                   TextColor::secondary, nullptr));
        column->addWidget(
            panelRow(u"arrow.up.circle"_s, u"report.pdf · 25%"_s, caption, TextColor::secondary, nullptr));
        column->addWidget(panelRow(u"pause.circle"_s, t_(u"Pause syncing", u"暂停同步"), body,
                                   TextColor::primary, new Switch(Switch::Size::small)));
        column->addWidget(new Divider);
        auto *lit = historyRow(u"photo"_s, t_(u"Screenshot 1440 × 900", u"屏幕截图 1440 × 900"),
                               t_(u"Travel laptop", u"出差笔记本"));
        lit->setObjectName(u"lit"_s);
        column->addWidget(historyRow(u"text.alignleft"_s,
                                     u"ssh deploy@10.0.0.12 'systemctl status quorbitd'"_s,
                                     t_(u"Office Linux", u"办公室电脑")));
        column->addWidget(lit);
        column->addWidget(
            historyRow(u"doc.on.doc"_s, t_(u"3 files", u"3 个文件"), t_(u"Studio Mac", u"工作室电脑")));
        return result;
    }

    std::unique_ptr<QWidget> overview() const {
        auto *form = new Form;
        auto *local = new FormSection(t_(u"This computer", u"本机"));
        auto *name = new TextField;
        name->setObjectName(u"focused"_s);
        name->setMaximumWidth(240);
        name->setValue(t_(u"Studio Mac", u"工作室电脑"));
        local->addRow(new FormRow(t_(u"Device name", u"设备名称"), name));
        const auto value = [](const QString &text, TextStyle style) {
            auto *label = new SelectableText(style, TextColor::secondary, true);
            label->setValue(text);
            return label;
        };
        local->addRow(
            new FormRow(t_(u"Device ID", u"设备标识"), value(u"10b4e2f09a77c1d3"_s, TextStyle::body)));
        local->addRow(new FormRow(t_(u"Port", u"端口"), value(u"8080"_s, TextStyle::body)));
        local->addRow(
            new FormRow(t_(u"Status", u"状态"),
                        row({new StatusDot(TextColor::green),
                             new TextLabel(t_(u"Running", u"正在运行"), TextStyle::body, TextColor::primary)},
                            6, false)));
        form->addSection(local);
        auto *peers = new FormSection(t_(u"Connected computers", u"已连接的电脑"));
        for (const auto &[peer, id] : {std::pair(t_(u"Travel laptop", u"出差笔记本"), u"10b91c33"_s),
                                       std::pair(t_(u"Office Linux", u"办公室电脑"), u"77aa01fe"_s)}) {
            auto *line = new FormRow(peer, value(id, TextStyle::caption));
            line->setSymbol(u"laptopcomputer"_s);
            peers->addRow(line);
        }
        form->addSection(peers);
        return window(0, form, {580, 520});
    }

    std::unique_ptr<QWidget> sync() const {
        auto *form = new Form;
        auto *kinds = new FormSection(t_(u"Content to sync", u"同步内容"));
        for (const auto &[kind, on] :
             {std::pair(t_(u"Text", u"文字"), true), std::pair(t_(u"Images", u"图片"), true),
              std::pair(t_(u"Files", u"文件"), false)}) {
            auto *flip = new Switch;
            flip->setOn(on);
            flip->setObjectName(on ? u"focused"_s : QString());
            kinds->addRow(new FormRow(kind, flip));
        }
        form->addSection(kinds);
        auto *transfer = new FormSection(t_(u"Transfer", u"传输"));
        auto *cap = new Stepper(1, 10240, 10);
        cap->setValue(100);
        auto *largest = new FormRow(t_(u"Largest file", u"最大文件"), cap);
        largest->addControl(new TextLabel(u"MB"_s, TextStyle::body, TextColor::secondary));
        transfer->addRow(largest);
        transfer->setFooter(t_(u"Larger files stay on the computer where they were copied.",
                               u"更大的文件会留在复制它们的电脑上。"));
        form->addSection(transfer);
        auto *history = new FormSection(t_(u"Clipboard history", u"剪贴板历史"));
        history->setHeaderControl(new Button(t_(u"Clear", u"清空"), ButtonKind::destructiveCaption));
        history->addRow(new FormRow(new TextField(t_(u"Search history", u"搜索历史"))));
        auto *lit = historyRow(u"photo"_s, t_(u"Screenshot 1440 × 900", u"屏幕截图 1440 × 900"),
                               t_(u"Travel laptop", u"出差笔记本"));
        lit->setObjectName(u"lit"_s);
        history->addRow(historyRow(u"text.alignleft"_s,
                                   u"ssh deploy@10.0.0.12 'systemctl --user status --no-pager quorbitd'"_s,
                                   t_(u"Office Linux", u"办公室电脑")));
        history->addRow(lit);
        history->addRow(historyRow(u"doc.on.doc"_s, t_(u"3 files", u"3 个文件"), QString()));
        history->setFooter(
            t_(u"Click an entry to put it back on the clipboard.", u"点按条目可将其放回剪贴板。"));
        form->addSection(history);
        return window(1, form, {580, 600});
    }

    std::unique_ptr<QWidget> behaviour() const {
        auto *form = new Form;
        auto *sharing = new FormSection(t_(u"Keyboard and mouse", u"键盘和鼠标"));
        auto *on = new Switch;
        on->setOn(true);
        sharing->addRow(new FormRow(t_(u"Share keyboard and mouse", u"共享键盘和鼠标"), on));
        sharing->addRow(new FormRow(row(
            {new StatusDot(TextColor::orange), new TextLabel(t_(u"Allow accessibility below to start sharing",
                                                                u"请在下方允许辅助功能以开始共享"),
                                                             TextStyle::callout, TextColor::secondary)})));
        form->addSection(sharing);
        auto *section = new FormSection(t_(u"Behaviour", u"行为"));
        section->addRow(new FormRow(t_(u"Swap ⌘ and Ctrl", u"交换 ⌘ 和 Ctrl"), new Switch));
        for (const auto &[label, option] : {std::pair(t_(u"Switch delay", u"切换延迟"), u"250 ms"_s),
                                            std::pair(t_(u"Dead corners", u"屏幕死角"), u"32 px"_s),
                                            std::pair(t_(u"Pointer speed", u"指针速度"), u"1.5×"_s)}) {
            auto *picker = new MenuPicker;
            picker->setOptions({option});
            picker->setCurrent(0);
            section->addRow(new FormRow(label, picker));
        }
        section->addRow(new FormRow(t_(u"No selection", u"没有选择"), new MenuPicker));
        section->setFooter(t_(u"A short delay keeps the pointer from crossing by accident.",
                              u"短暂的延迟可以避免指针意外越过边缘。"));
        form->addSection(section);
        return window(2, form, {580, 560});
    }

    std::unique_ptr<QWidget> about() const {
        auto *form = new Form;
        auto *banner = new Card(Card::Kind::tinted);
        auto *content = new QWidget;
        auto *line = new QHBoxLayout(content);
        line->setContentsMargins(14, 14, 14, 14);
        line->setSpacing(12);
        line->addWidget(new SymbolLabel(u"sparkles"_s, 22, TextColor::accent), 0, Qt::AlignTop);
        auto *column = new QVBoxLayout;
        column->setSpacing(4);
        column->addWidget(new TextLabel(t_(u"Quorbit 1.5.0 is available", u"Quorbit 1.5.0 已可用"),
                                        TextStyle::headline, TextColor::primary));
        column->addWidget(new TextLabel(t_(u"You have 1.4.1", u"当前版本 1.4.1"), TextStyle::caption,
                                        TextColor::secondary));
        column->addWidget(new Button(t_(u"Download", u"下载"), ButtonKind::prominent, ButtonSize::small), 0,
                          Qt::AlignLeft);
        line->addLayout(column, 1);
        banner->addRow(content);
        form->addSection(banner);
        auto *updates = new FormSection(t_(u"Updates", u"更新"));
        auto *status = new FormRow(t_(u"Quorbit 1.5.0 is available", u"Quorbit 1.5.0 已可用"),
                                   new Button(t_(u"Check now", u"立即检查")));
        updates->addRow(status);
        form->addSection(updates);
        auto *language = new FormSection(t_(u"Language", u"语言"));
        auto *picker = new MenuPicker;
        picker->setOptions({t_(u"Same as system", u"跟随系统")});
        picker->setCurrent(0);
        language->addRow(new FormRow(t_(u"Interface language", u"界面语言"), picker));
        auto *restart = new QWidget;
        auto *restartRow = new QHBoxLayout(restart);
        restartRow->setContentsMargins({});
        auto *prompt =
            new IconLabel(u"arrow.clockwise.circle.fill"_s,
                          t_(u"Restart Quorbit to use the new language.", u"重新启动 Quorbit 以使用新语言。"),
                          TextStyle::caption, TextColor::secondary);
        prompt->symbol().setColor(TextColor::orange);
        restartRow->addWidget(prompt, 1);
        restartRow->addWidget(
            new Button(t_(u"Restart now", u"立即重启"), ButtonKind::bordered, ButtonSize::small));
        language->setFooterWidget(restart);
        form->addSection(language);
        return window(4, form, {580, 480});
    }

    std::unique_ptr<QWidget> buttons() const {
        auto result = std::make_unique<QWidget>();
        auto *grid = new QGridLayout(result.get());
        grid->setContentsMargins(20, 20, 20, 20);
        grid->setSpacing(14);
        int line = 0;
        for (const ButtonKind kind : {ButtonKind::prominent, ButtonKind::bordered, ButtonKind::destructive,
                                      ButtonKind::destructiveProminent, ButtonKind::destructiveCaption}) {
            int at = 0;
            for (const ButtonSize size : {ButtonSize::regular, ButtonSize::small}) {
                auto *plain = new Button(t_(u"Done", u"完成"), kind, size);
                auto *symbol = new Button(t_(u"Add a computer", u"添加电脑"), kind, size);
                symbol->setSymbol(u"plus"_s);
                auto *busy = new Button(t_(u"Connect", u"连接"), kind, size);
                busy->setBusy(true);
                auto *disabled = new Button(t_(u"Download", u"下载"), kind, size);
                disabled->setEnabled(false);
                for (Button *button : {plain, symbol, busy, disabled})
                    grid->addWidget(button, line, at++, Qt::AlignLeft);
            }
            ++line;
        }
        auto *off = new Switch;
        auto *on = new Switch;
        on->setOn(true);
        auto *disabledOn = new Switch;
        disabledOn->setOn(true);
        disabledOn->setEnabled(false);
        auto *smallOn = new Switch(Switch::Size::small);
        smallOn->setOn(true);
        grid->addWidget(
            row({off, on, disabledOn, smallOn, new Switch(Switch::Size::small), new ProgressIndicator}, 14),
            line++, 0, 1, 4);
        auto *segments = new SegmentedPicker;
        segments->setOptions({t_(u"Show a PIN", u"显示 PIN"), t_(u"Enter a PIN", u"输入 PIN")});
        segments->setCurrent(0);
        grid->addWidget(segments, line++, 0, 1, 4);
        return result;
    }

    std::unique_ptr<QWidget> symbols() const {
        auto result = std::make_unique<QWidget>();
        auto *grid = new QGridLayout(result.get());
        int index = 0;
        const QStringList names = symbolNames() + QStringList{u"no.such.symbol"_s};
        for (const QString &name : names) {
            grid->addWidget(new IconLabel(name, name, TextStyle::body, TextColor::secondary), index / 3,
                            index % 3);
            ++index;
        }
        return result;
    }

    void saveSheet() {
        QWidget behind;
        behind.resize(580, 520);
        auto *sheet = new Sheet(u"Add a computer"_s, {400, 340}, &behind);
        sheet->content()->addWidget(
            new TextLabel(t_(u"Add a computer", u"添加电脑"), TextStyle::title3, TextColor::primary));
        auto *mode = new SegmentedPicker;
        mode->setOptions({t_(u"Show a PIN", u"显示 PIN"), t_(u"Enter a PIN", u"输入 PIN")});
        mode->setCurrent(0);
        sheet->content()->addWidget(mode);
        sheet->content()->addWidget(
            new TextLabel(t_(u"Type this PIN on the other computer.", u"在另一台电脑上输入此 PIN。"),
                          TextStyle::callout, TextColor::secondary));
        auto *pin = new SelectableText(TextStyle::display, TextColor::primary, true);
        pin->setLetterSpacing(8);
        pin->setValue(u"482 913"_s);
        pin->setAlignment(Qt::AlignCenter);
        sheet->content()->addWidget(pin);
        sheet->content()->addWidget(
            new IconLabel(u"clock"_s, t_(u"Waiting for the other computer…", u"正在等待另一台电脑…"),
                          TextStyle::callout, TextColor::secondary));
        sheet->content()->addStretch();
        auto *done = new Button(t_(u"Done", u"完成"), ButtonKind::prominent);
        sheet->content()->addWidget(done, 0, Qt::AlignRight);
        behind.show();
        done->setObjectName(u"focused"_s);
        sheet->open();
        save(behind, u"sheet"_s);
    }

    void saveAlert() {
        QWidget behind;
        behind.resize(580, 420);
        auto *alert = new Alert({t_(u"Remove this computer?", u"移除这台电脑？"),
                                 t_(u"Office Linux will no longer share its clipboard with this computer "
                                    u"until it is paired again.",
                                    u"在重新配对之前，办公室电脑将不再与本机共享剪贴板。"),
                                 t_(u"Cancel", u"取消"), t_(u"Remove", u"移除")},
                                &behind);
        behind.show();
        alert->open();
        save(behind, u"alert"_s);
    }

    void saveMenu() {
        QWidget behind;
        auto *picker = new MenuPicker(&behind);
        picker->setOptions({t_(u"Same as system", u"跟随系统"), u"简体中文"_s, u"English"_s});
        picker->setCurrent(1);
        behind.show();
        QApplication::processEvents();
        picker->click();
        QApplication::processEvents();
        if (auto *menu = picker->findChild<QMenu *>())
            menu->grab().save(QDir(out_).filePath(u"menu"_s + suffix_ + u".png"_s));
    }

    QString out_;
    Texts t_;
    QString suffix_;
};

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({u"out"_s, u"Where the pictures go."_s, u"directory"_s, u"."_s});
    parser.addOption({u"family"_s, u"The font's family."_s, u"name"_s, u"Inter"_s});
    parser.addOption({u"chinese"_s, u"With Chinese texts."_s});
    parser.addOption({u"large"_s, u"At twice the font size."_s});
    parser.addOption({u"contrast"_s, u"In high contrast."_s});
    parser.addOption({u"mirrored"_s, u"From right to left."_s});
    parser.process(application);
    if (parser.isSet(u"mirrored"_s))
        QApplication::setLayoutDirection(Qt::RightToLeft);
    const QString out = parser.value(u"out"_s);
    QDir().mkpath(out);
    QApplication::setStyle(new ControlStyle);
    QApplication::setFont(QFont(parser.value(u"family"_s), parser.isSet(u"large"_s) ? 18 : 9));

    // Fonts and palettes reach the widgets by events.
    QTimer::singleShot(0, &application, [&] {
        for (const bool dark : {false, true}) {
            Appearance appearance;
            appearance.dark = dark;
            appearance.highContrast = parser.isSet(u"contrast"_s);
            QApplication::setPalette(themePalette(appearance));
            const QString suffix = (dark ? u"-dark"_s : u"-light"_s) +
                                   (parser.isSet(u"chinese"_s) ? u"-zh"_s : QString()) +
                                   (parser.isSet(u"large"_s) ? u"-large"_s : QString()) +
                                   (parser.isSet(u"contrast"_s) ? u"-contrast"_s : QString()) +
                                   (parser.isSet(u"mirrored"_s) ? u"-rtl"_s : QString()) +
                                   u"@%1x"_s.arg(application.devicePixelRatio());
            Gallery(out, parser.isSet(u"chinese"_s), suffix).draw();
        }
        QApplication::quit();
    });
    return QApplication::exec();
}
