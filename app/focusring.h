// SPDX-License-Identifier: MIT
// A ring around whatever has the focus, in every window of the program, once the keyboard has been used to move it.
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

class FocusRing : public QObject
{
public:
    explicit FocusRing(QObject *parent);
    ~FocusRing() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QWidget *widget);
    void place();

    QPointer<QWidget> m_target;
    QPointer<QWidget> m_ring; // goes with the target's parent
};
