// SPDX-License-Identifier: MIT
// Answers message boxes as a user would, and remembers what they said.
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

    void setButton(QMessageBox::StandardButton button) { m_button = button; }
    /// From now on presses the button with this caption; an empty one dismisses the box with Escape.
    void setCaption(const QString &caption)
    {
        m_caption = caption;
        m_byCaption = true;
    }
    /// Called once, while the next box is open and before it is answered.
    void onBox(std::function<void()> work) { m_onBox = std::move(work); }

    /// "title|text" (and "|informative text" where there is one) of every box met, in order.
    const QStringList &seen() const { return m_seen; }
    void clear() { m_seen.clear(); }

private:
    void look();

    QMessageBox::StandardButton m_button;
    QString m_caption;
    bool m_byCaption = false;
    std::function<void()> m_onBox;
    QStringList m_seen;
};
