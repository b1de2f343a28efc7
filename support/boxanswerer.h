// SPDX-License-Identifier: MIT
// Message boxes in tests: answered as a user would (BoxAnswerer), or reported where nobody expects one (BoxGuard).
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>

class BoxAnswerer : public QObject
{
    Q_OBJECT

public:
    /// Presses `button`, or the box's first one, in every box that opens while this object lives.
    explicit BoxAnswerer(QMessageBox::StandardButton button = QMessageBox::Yes);
    ~BoxAnswerer() override;

    void setButton(QMessageBox::StandardButton button) { m_button = button; }
    /// From now on presses the button with this caption; an empty one dismisses the box with Escape. A box without such
    /// a button fails the test.
    void setCaption(const QString &caption)
    {
        m_caption = caption;
        m_byCaption = true;
    }
    /// From now on boxes stay as they are.
    void leaveOpen() { m_leaveOpen = true; }
    /// Called once, while the next box is open and before it is answered.
    // cppcheck-suppress danglingLifetime
    void onBox(std::function<void()> work) { m_onBox = std::move(work); }

    /// "title|text" (and "|informative text" where there is one) of every box met, in order.
    const QStringList &seen() const { return m_seen; }
    /// Caption of the default button of every box met, in order; empty where a box has none.
    const QStringList &defaults() const { return m_defaults; }
    void clear();

    /// One lives: boxes are expected.
    static bool isPresent();

private:
    void look();
    void meet(QMessageBox &box);
    void remember(QMessageBox &box);
    void answer(QMessageBox &box);

    QMessageBox::StandardButton m_button;
    QString m_caption;
    bool m_byCaption = false;
    bool m_leaveOpen = false;
    std::function<void()> m_onBox;
    QStringList m_seen, m_defaults;
};

/// A message box that opens while no BoxAnswerer lives fails the test with its words, and is dismissed.
class BoxGuard : public QObject
{
    Q_OBJECT

public:
    BoxGuard();

private:
    bool eventFilter(QObject *object, QEvent *event) override;
};
