// SPDX-License-Identifier: MIT
// The serial port settings dialog. The program makes one and never shows it.
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace Ui {
class serialportconfig;
}

class serialportconfig : public QDialog
{
    Q_OBJECT

public:
    explicit serialportconfig(QWidget *parent = nullptr);
    ~serialportconfig() override;

private slots:
    void on_pushButton_clicked();
    void on_pushButton_2_clicked();

private:
    std::unique_ptr<Ui::serialportconfig> ui;
    QStringList m_portNames;
};
