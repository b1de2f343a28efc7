// SPDX-License-Identifier: MIT
#include "presenter/driver.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>

#include <algorithm>

namespace driver {

namespace {

constexpr int kBoxWidth = 8; // of a check box or radio button: a press there always counts

void sendMouse(QWidget *widget, QEvent::Type type, const QPoint &place, Qt::MouseButtons held)
{
    QMouseEvent event(type, place, widget->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void sendKey(QWidget *widget, int key, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(widget, &event);
    }
}

QString onOff(bool on)
{
    return on ? QStringLiteral("[on]") : QStringLiteral("[off]");
}

QString textOfButton(const QAbstractButton *button)
{
    return button->isCheckable() ? onOff(button->isChecked()) : QString();
}

} // namespace

QWidget *find(const QString &name)
{
    const auto all = QApplication::allWidgets();
    const auto it = std::find_if(all.begin(), all.end(), [&](QWidget *widget) { return widget->objectName() == name; });
    return it == all.end() ? nullptr : *it;
}

void turnTo(QWidget *widget)
{
    for (QWidget *page = widget; page && page->parentWidget(); page = page->parentWidget()) {
        auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget());
        if (tabs && tabs->indexOf(page) >= 0 && tabs->currentWidget() != page) {
            tabs->setCurrentWidget(page);
            QApplication::processEvents(); // lays the page out
        }
    }
}

bool openPage(const QWidget *window, const QString &title)
{
    const auto books = window->findChildren<QTabWidget *>();
    for (QTabWidget *book : books) {
        for (int i = 0; book->isVisible() && i < book->count(); ++i) {
            if (book->tabText(i) == title) {
                book->setCurrentIndex(i);
                return true;
            }
        }
    }
    return false;
}

bool turnToPage(const QWidget *window, const QString &title)
{
    const auto books = window->findChildren<QTabWidget *>();
    for (const QTabWidget *book : books) {
        for (int i = 0; i < book->count(); ++i) {
            if (book->tabText(i) == title) {
                turnTo(book->widget(i));
                return true;
            }
        }
    }
    return false;
}

void press(QWidget *widget)
{
    const auto *button = qobject_cast<QAbstractButton *>(widget);
    const QPoint middle = widget->rect().center();
    press(widget, button && button->isCheckable() ? QPoint(kBoxWidth, middle.y()) : middle);
}

void press(QWidget *widget, const QPoint &place)
{
    sendMouse(widget, QEvent::MouseButtonPress, place, Qt::LeftButton);
    sendMouse(widget, QEvent::MouseButtonRelease, place, Qt::NoButton);
}

bool enter(QWidget *widget, const QString &text)
{
    if (auto *field = qobject_cast<QLineEdit *>(widget))
        field->setText(text);
    else if (auto *edit = qobject_cast<QPlainTextEdit *>(widget))
        edit->setPlainText(text);
    else if (auto *number = qobject_cast<QSpinBox *>(widget))
        number->setValue(text.toInt());
    else if (auto *box = qobject_cast<QComboBox *>(widget))
        box->setCurrentText(text);
    else
        return false;
    return true;
}

void type(QWidget *widget, const QString &text)
{
    for (const QChar letter : text) {
        if (letter == QLatin1Char('\n'))
            pressKey(widget, Qt::Key_Return);
        else
            sendKey(widget, letter.toUpper().unicode(), QString(letter));
    }
}

void pressKey(QWidget *widget, int key)
{
    sendKey(widget, key, QString());
}

bool isOurs(const QObject *object)
{
    const QString name = object->objectName();
    return !name.isEmpty() && !name.startsWith(QLatin1String("qt_")) && !name.startsWith(QLatin1String("Scroll"));
}

QString portState(const QMainWindow &window)
{
    return window.statusBar()->findChild<QLabel *>()->text();
}

QString textOf(const QWidget *widget)
{
    if (auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (auto *field = qobject_cast<const QLineEdit *>(widget))
        return field->text();
    if (auto *box = qobject_cast<const QTextEdit *>(widget))
        return box->toPlainText();
    if (auto *box = qobject_cast<const QPlainTextEdit *>(widget))
        return box->toPlainText();
    if (auto *digits = qobject_cast<const QLCDNumber *>(widget))
        return QString::number(digits->intValue());
    if (auto *number = qobject_cast<const QSpinBox *>(widget))
        return number->text();
    if (auto *box = qobject_cast<const QComboBox *>(widget))
        return box->currentText();
    if (auto *group = qobject_cast<const QGroupBox *>(widget))
        return group->isCheckable() ? onOff(group->isChecked()) : QString();
    if (auto *button = qobject_cast<const QAbstractButton *>(widget))
        return textOfButton(button);
    return {};
}

} // namespace driver
