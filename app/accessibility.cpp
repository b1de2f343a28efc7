// SPDX-License-Identifier: MIT
#include "app/accessibility.h"

#include "ui_mainwindow.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QLCDNumber>
#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

namespace accessibility {

namespace {

constexpr char kAlerts[] = "alerts"; // property of a widget that is said at once when it changes

QString valueOf(const QObject *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text().simplified();
    const auto *digits = qobject_cast<const QLCDNumber *>(widget);
    return digits ? QString::number(digits->intValue()) : QString();
}

// A label with a name: the library would hide its text behind that.
class NamedValue : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit NamedValue(QWidget *widget) : QAccessibleWidget(widget, QAccessible::StaticText) {}

    QAccessible::Role role() const override
    {
        return object()->property(kAlerts).toBool() ? QAccessible::Notification : QAccessible::StaticText;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }

    // "80, Green: on"; only what neither the name nor the description says already.
    QString text(QAccessible::Text kind) const override
    {
        QString words = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Description)
            return words;
        const QString said = widget()->accessibleName() + QLatin1Char('\n') + words;
        const QString value = valueOf(object());
        if (value.isEmpty() || said.contains(value, Qt::CaseInsensitive))
            return words;
        return words.isEmpty() ? value : value + QLatin1String(", ") + words;
    }

    QString text(int from, int to) const override { return valueOf(object()).mid(from, to - from); }
    int characterCount() const override { return static_cast<int>(valueOf(object()).size()); }
    void selection(int, int *from, int *to) const override { *from = *to = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *from, int *to) const override
    {
        *from = 0;
        *to = characterCount();
        return {};
    }
};

QAccessibleInterface *makeNamedValue(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    const bool shows = qobject_cast<QLabel *>(object) || qobject_cast<QLCDNumber *>(object);
    return shows && !widget->accessibleName().isEmpty() ? new NamedValue(widget) : nullptr;
}

struct Change {
    QPointer<QWidget> widget;
    QAccessible::Event type;
};

std::vector<Change> missed; // by who cannot see the widget
QAccessible::UpdateHandler nextHandler = nullptr;

void filter(QAccessibleEvent *event);

void pass(QAccessibleEvent *event)
{
    if (nextHandler) {
        nextHandler(event);
        return;
    }
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(filter);
}

bool isOfWidgetsLife(QAccessible::Event type)
{
    return type == QAccessible::ObjectShow || type == QAccessible::ObjectHide || type == QAccessible::ObjectDestroyed
        || type == QAccessible::Alert || type == QAccessible::Focus;
}

// What a reader keeps a copy of.
bool isKept(QAccessible::Event type)
{
    return type == QAccessible::NameChanged || type == QAccessible::DescriptionChanged
        || type == QAccessible::StateChanged;
}

void filter(QAccessibleEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(event->object());
    const QAccessible::Event type = event->type();
    if (!widget || widget->isVisible() || isOfWidgetsLife(type)) {
        pass(event);
        return;
    }
    const auto same = [&](const Change &change) { return change.widget == widget && change.type == type; };
    if (isKept(type) && std::none_of(missed.begin(), missed.end(), same))
        missed.push_back({widget, type});
}

void tell(QWidget *widget, QAccessible::Event type)
{
    if (type == QAccessible::StateChanged) {
        QAccessible::State changed;
        changed.checked = true;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(widget, changed);
        QAccessible::updateAccessibility(&event);
        return;
    }
    QAccessibleEvent event(widget, type);
    QAccessible::updateAccessibility(&event);
}

// What is still hidden goes back where it was.
void tellMissed()
{
    const auto changes = std::exchange(missed, {});
    for (const Change &change : changes) {
        if (change.widget)
            tell(change.widget, change.type);
    }
}

// An interface that was asked for while its widget was being built took the widget for something simpler, and would stay.
void forgetUnfinished(QWidget &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget)));
}

struct Caption {
    QLabel *label;
    QWidget *of;
};

void setCaptions(const Ui::MainWindow &form)
{
    const Caption rows[] = {
        {form.label_FCCU_history, form.comboBox_FaultID},
        {form.label_cmu_choice, form.comboBox_cmu_choice},
        {form.label_cmu_fmin, form.spinBox_cmu_fmin},
        {form.label_cmu_fmax, form.spinBox_cmu_fmax},
        {form.label_memu_type_6, form.comboBox_memu_1},
        {form.label_memu_type_7, form.comboBox_memu_2},
        {form.label_memu_type_8, form.comboBox_memu_3},
        {form.label_crc_instance, form.comboBox_CRC_instance},
        {form.label_crc_channel, form.comboBox_CRC_channel},
        {form.label_crc_polynomial, form.comboBox_CRC_polynomial},
        {form.label_intcm_chx, form.comboBox_intcm_statusCore},
        {form.label_intcm_index, form.comboBox_intcm_statusIndex},
        {form.label_intcm_cfgCore, form.comboBox_intcm_core},
        {form.label_intcm_cfgIndex, form.comboBox_intcm_index},
        {form.label_intcm_cfgMode, form.comboBox_intcm_mode},
        {form.label_swt_core, form.comboBox_swt_core},
        {form.label_swt_mode, form.comboBox_swt_mode},
        {form.label_swt_timeout, form.spinBox_swt_timeout},
    };
    for (const Caption &row : rows)
        row.label->setBuddy(row.of);
}

struct Name {
    QWidget *widget;
    const char *name;
};

void setNames(const Ui::MainWindow &form)
{
    // clang-format off
    const Name rows[] = {
        {form.tabWidget_function, "Modules"},
        {form.tabWidget_safety, "Safety mechanisms"},
        {form.tabWidget_security, "Security functions"},
        {form.pushButton_freqlim_set, "Set the limits"},
        {form.pushButton_memu_inject, "Inject into FLASH"},
        {form.pushButton_memu_inject_2, "Inject into PRAM"},
        {form.pushButton_memu_inject_3, "Inject into SRAM"},
        {form.pushButton_memu_inject_5, "Inject into D-cache"},
        {form.pushButton_CRC_set, "Set and calculate"},
        {form.pushButton_intcm_config, "Set the monitor"},
        {form.pushButton_PMC_PMCLVD_stest, "Self Test, PMC LVD"},
        {form.pushButton_PMC_IOLVD_stest, "Self Test, IO LVD"},
        {form.pushButton_PMC_FlashLVD_stest, "Self Test, Flash LVD"},
        {form.pushButton_PMC_PLLLVD_selftest, "Self Test, PLL LVD"},
        {form.pushButton_PMC_ADCHVD_stest, "Self Test, ADC HVD"},
        {form.pushButton_PMC_ADCELVD_stest, "Self Test, ADC LVD"},
        {form.pushButton_PMC_CORELVD_stest, "Self Test, CORE LVD"},
        {form.pushButton_PMC_CORELVD_stest_2, "Self Test, CORE HVD"},
        {form.pushButton_swt_commandset, "Set the watchdog"},
        {form.label_swt_onoff_0, "SWT0 state"},
        {form.label_swt_onoff_1, "SWT1 state"},
        {form.label_swt_onoff_2, "SWT2 state"},
        {form.pushButton_cse_Encryption1, "Encryption AES128-ECB"},
        {form.pushButton_cse_Encryption2, "Encryption AES128-CBC"},
        {form.pushButton_cse_Decryption1, "Decryption AES128-ECB"},
        {form.pushButton_cse_Decryption2, "Decryption AES128-CBC"},
        {form.pushButton_cse_Generation, "Generation AES128-CMAC"},
        {form.pushButton_cse_Verification, "Verification AES128-CMAC"},
        {form.pushButton_cse_Pseudo, "Pseudo Random Number"},
        {form.pushButton_cse_True_random, "True Random Number"},
        {form.pushButton_cse_Extend, "Extend PRNG Seed"},
        {form.pushButton_reg_writedata, "Set: write data"},
        {form.pushButton_reg_turnonsoft1, "Set: soft lock through the mirror space"},
        {form.pushButton_reg_turnonsoft2, "Set: soft lock by its lock bit"},
        {form.pushButton_reg_turnonhard, "Set: hard lock"},
        {form.pushButton_F_resetEsc_set, "Set, functional reset escalation"},
        {form.pushButton_F_resetEsc_clear, "Clear, functional reset escalation"},
        {form.pushButton_D_resetEsc_set, "Set, destructive reset escalation"},
        {form.pushButton_D_resetEsc_clear, "Clear, destructive reset escalation"},
    };
    // clang-format on
    for (const Name &row : rows)
        row.widget->setAccessibleName(QString::fromLatin1(row.name));
}

QString titleOf(const QTabWidget *book, const QWidget *part)
{
    for (int i = 0; i < book->count(); ++i) {
        if (book->widget(i)->isAncestorOf(part))
            return book->tabText(i);
    }
    return {};
}

// "Get Fault" stands on nine pages: "Get Fault, CMU".
void nameByPage(const QTabWidget *book)
{
    QHash<QString, int> captions;
    const auto buttons = book->findChildren<QPushButton *>();
    for (const QPushButton *button : buttons)
        ++captions[button->text()];
    for (QPushButton *button : buttons) {
        if (button->accessibleName().isEmpty() && captions.value(button->text()) > 1)
            button->setAccessibleName(button->text() + QLatin1String(", ") + titleOf(book, button));
    }
}

} // namespace

void install()
{
    static const bool once = [] {
        QAccessible::installFactory(makeNamedValue);
        return true;
    }();
    Q_UNUSED(once)
    const QAccessible::UpdateHandler before = QAccessible::installUpdateHandler(filter);
    if (before != filter)
        nextHandler = before;
}

void prepare(QWidget &window, const Ui::MainWindow &form)
{
    forgetUnfinished(window);
    setCaptions(form);
    setNames(form);
    for (const QTabWidget *book : {form.tabWidget_safety, form.tabWidget_security})
        nameByPage(book);
    form.label_FCCU_status->setProperty(kAlerts, true);
    for (QTabWidget *book : {form.tabWidget_function, form.tabWidget_safety, form.tabWidget_security})
        QObject::connect(book, &QTabWidget::currentChanged, book, tellMissed);
    missed.clear();
}

void valueChanged(QWidget *widget)
{
    if (QAccessible::isActive() && !widget->accessibleName().isEmpty())
        tell(widget, QAccessible::DescriptionChanged);
}

void alert(QWidget *widget)
{
    if (!QAccessible::isActive())
        return;
    for (const QAccessible::Event type : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(widget, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace accessibility
