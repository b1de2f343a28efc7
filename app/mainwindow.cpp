#include "app/mainwindow.h"

#include "app/form.h"
#include "app/indicators.h"
#include "link/commandchannel.h"
#include "link/serialline.h"
#include "link/serialportconfig.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QListView>

// Outside any namespace, as the macro wants it.
static void loadResources()
{
    Q_INIT_RESOURCE(1);
}

namespace {

// What is asked for when the user turns to a page of the safety tab; a second request follows after a wait.
struct PageRequest {
    const char *first;
    const char *second;
};

constexpr PageRequest pageRequests[] = {
    {"get 3", "get 4"}, // CMU
    {"get 11", nullptr}, // XBIC
    {"get 5", nullptr}, // SMPU
    {nullptr, nullptr}, // MEMU
    {nullptr, nullptr}, // CRC
    {"get 7", nullptr}, // INTCM
    {"get 10", nullptr}, // VG5k
    {"get 6", nullptr}, // PMC
    {"get 2", nullptr}, // SWT
};

constexpr int kRequestGapMs = 50;

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    loadResources();
    setupForm(*ui, *this);
    m_portDialog = std::make_unique<serialportconfig>();
    QFile sheet(QStringLiteral(":/images/my.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    init();
}

MainWindow::~MainWindow() = default;

void MainWindow::init()
{
    connectActions();
    prepareForm();
    connect(gSerialPort, &QSerialPort::errorOccurred, this, &MainWindow::onPortError);
    choosePort();
    if (m_startRefused)
        return;
    if (!gPortName.isEmpty() || portNameList.isEmpty())
        openChosenPort();
    prepareFields();

    delayMs(kRequestGapMs);
    sendCommand(QStringLiteral("get 3"));
    delayMs(kRequestGapMs);
    sendCommand(QStringLiteral("get 4"));
    Get_Status();
}

void MainWindow::connectActions()
{
    connect(ui->actionopen, &QAction::triggered, this, &MainWindow::Serialport_open);
    connect(ui->actionclose, &QAction::triggered, this, &MainWindow::Serialport_close);
    connect(ui->actionDestructive_Reset, &QAction::triggered, this, &MainWindow::D_Reset);
    connect(ui->actionFunctional_Reset, &QAction::triggered, this, &MainWindow::F_Reset);
    connect(ui->actionGet_Status, &QAction::triggered, this, &MainWindow::Get_Status);
}

// Before the port is chosen: what the questions are asked over.
void MainWindow::prepareForm()
{
    for (QLabel *unused : {ui->label_core0clk_fmin_7, ui->label_core0clk_fmin_8})
        unused->hide();
    ui->tabWidget_safety->setCurrentIndex(0);
    ui->tabWidget_security->setCurrentIndex(0);
    m_portState = new QLabel(this);
    m_portState->setTextFormat(Qt::PlainText);
    m_portState->setAccessibleName(tr("Serial port"));
    statusBar()->addWidget(m_portState, 1);
    showPortState();
}

// Idle colours, leftovers out of sight, validators, drop-down lists that the style sheet reaches.
void MainWindow::prepareFields()
{
    ui->tabWidget_function->removeTab(ui->tabWidget_function->indexOf(ui->tab_commandLine));
    const auto boxes = findChildren<QComboBox *>();
    for (QComboBox *box : boxes)
        box->setView(new QListView(box));
}

void MainWindow::on_tabWidget_safety_currentChanged(int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(pageRequests)))
        return;
    const PageRequest &request = pageRequests[index];
    if (request.first)
        sendCommand(QString::fromLatin1(request.first));
    if (request.second) {
        delayMs(kRequestGapMs);
        sendCommand(QString::fromLatin1(request.second));
    }
}
