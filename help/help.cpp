// SPDX-License-Identifier: MIT
// The Help menu: manual, video, introduction, About, licence.
#include "app/datafiles.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "help/introduce.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStatusBar>
#include <QUrl>

namespace {

const char kAbout[] =
    "Safety Workbench (V1.0)\r\n\n"
    "Built on Oct 2019\r\n\n"
    "This program is provided for visualising the QM7D305 safety and security demonstration on a PC.\r\n\n"
    "Copyright (c) the Safety Workbench project. All rights not granted by the licence are reserved.";

const char kLicense[] =
    "Copyright (c) the Safety Workbench project.\r\n\n"
    "This program may be used only under the applicable licence terms, those of the MIT licence that "
    "comes with it. By using it you agree to these terms. If you do not agree to them, do not keep, "
    "install or use the program.";

constexpr int kTroubleShownMs = 10000;

// Hands the file to the desktop, also a missing one. What went wrong as far as we know it; empty where nothing did.
QString openFile(const QString &path)
{
    const QString file = dataFile(path);
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    if (!QFileInfo::exists(file))
        return QStringLiteral("Not found: ") + QDir::cleanPath(path);
    return opened ? QString() : QStringLiteral("No program opens ") + QDir::cleanPath(file);
}

} // namespace

void MainWindow::Open_Manuel()
{
    statusBar()->showMessage(openFile(QStringLiteral("./Document/User Manual.pdf")), kTroubleShownMs);
}

void MainWindow::Open_Video()
{
    statusBar()->showMessage(openFile(QStringLiteral("./Video/GUI Tutorial.mp4")), kTroubleShownMs);
}

void MainWindow::GUI_Introduce()
{
    m_introduction = new introduce;
    m_introduction->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                                   | Qt::WindowCloseButtonHint);
    m_introduction->setAttribute(Qt::WA_DeleteOnClose);
    m_introduction->setAttribute(Qt::WA_QuitOnClose, false);
    m_introduction->show();
    m_introduction->centreOn(*this);
}

void MainWindow::GUI_About()
{
    inform(this, QStringLiteral("About GUI"), QString::fromLatin1(kAbout), QMessageBox::Close);
}

void MainWindow::GUI_License()
{
    inform(this, QStringLiteral("License"), QString::fromLatin1(kLicense), QMessageBox::Close);
}
