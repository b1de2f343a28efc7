// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"

#include "app/accessibility.h"
#include "app/application.h"
#include "app/elidedlabel.h"
#include "app/form.h"
#include "app/indicators.h"
#include "app/keys.h"
#include "app/linerecorder.h"
#include "app/linestatus.h"
#include "app/textview.h"
#include "app/zoom.h"
#include "link/commandchannel.h"
#include "link/serialline.h"
#include "link/serialportconfig.h"
#include "protocol/cmu.h"
#include "protocol/intcm.h"
#include "protocol/pmc.h"
#include "protocol/smpu.h"
#include "protocol/swt.h"
#include "protocol/vg5k.h"
#include "protocol/xbic.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QListView>
#include <QRegularExpressionValidator>
#include <QStatusBar>
#include <QTextDocument>

// Outside any namespace, as the macro wants it.
static void loadResources()
{
    Q_INIT_RESOURCE(1);
}

namespace {

// Requests sent when the user turns to a page of the safety tab; the second one follows after a wait.
struct PageRequest {
    QLatin1String first;
    QLatin1String second;
};

// clang-format off
constexpr PageRequest pageRequests[] = {
    {protocol::cmu::kGetClock, protocol::cmu::kGetMonitors},
    {protocol::xbic::kGetEnables, {}},
    {protocol::smpu::kGetRegions, {}},
    {}, // MEMU
    {}, // CRC
    {protocol::intcm::kGetStatus, {}},
    {protocol::vg5k::kGetItems, {}},
    {protocol::pmc::kGetStatus, {}},
    {protocol::swt::kGetStatus, {}},
};
// clang-format on

constexpr int kRequestGapMs = 50;
constexpr int kSavedShownMs = 4000;
constexpr int kZoomShownMs = 2000;

// The board's text messages go to a page that nobody sees: the latest are enough.
constexpr int kMaxMessages = 10'000;

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    loadResources();
    applyLook();
    accessibility::install();
    m_zoom = new Zoom(*this);
    setupForm(*ui, *this);
    accessibility::prepare(*this, *ui);
    makePages();
    makeTimeLine();
    connect(m_zoom, &Zoom::changed, this, [this](int percent) {
        if (statusBar()->isVisible()) // else what stands there would show through
            statusBar()->showMessage(QStringLiteral("Zoom: %1 %").arg(percent), kZoomShownMs);
    });
    m_recorder = new LineRecorder(*this);
    connect(m_recorder, &LineRecorder::saved, this, [this](const QString &path) {
        statusBar()->showMessage(QStringLiteral("Recording saved: ") + path, kSavedShownMs);
    });
    m_portDialog = std::make_unique<serialportconfig>();
    QFile sheet(QStringLiteral(":/images/my.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        m_zoom->dress(QString::fromUtf8(sheet.readAll()));
    makePresenter();
    init();
}

MainWindow::~MainWindow() = default;

void MainWindow::init()
{
    connectActions();
    prepareForm();
    connect(gSerialPort, &QSerialPort::errorOccurred, this, &MainWindow::onPortError);
    // Whoever opens the line, the console when it hands it back for one, the window hears it. Queued, so that bytes are
    // taken also while a decoder waits: a port does not emit readyRead again while a slot connected to it is running.
    connect(gSerialPort, &QSerialPort::readyRead, this, qOverload<>(&MainWindow::receiveData), Qt::QueuedConnection);
    m_startRefused = !choosePort();
    if (m_startRefused)
        return;
    if (!gPortName.isEmpty() || portNameList.isEmpty())
        openChosenPort();
    prepareFields();

    delayMs(kRequestGapMs);
    askAsAtStart();
}

/// Asks for the page in front and for the status.
void MainWindow::askAsAtStart()
{
    on_tabWidget_safety_currentChanged(ui->tabWidget_safety->currentIndex());
    Get_Status();
}

// The form's "teraterm" and "fault log" stand in no menu and do nothing.
void MainWindow::connectActions()
{
    struct Row {
        QAction *action;
        void (MainWindow::*slot)();
    };
    // clang-format off
    const Row rows[] = {
        {ui->actionconsole, &MainWindow::console_mode},
        {ui->actionopen, &MainWindow::Serialport_open},
        {ui->actionclose, &MainWindow::Serialport_close},
        {ui->actionDestructive_Reset, &MainWindow::D_Reset},
        {ui->actionFunctional_Reset, &MainWindow::F_Reset},
        {ui->actionGet_Status, &MainWindow::Get_Status},
        {ui->actionmanual, &MainWindow::Open_Manuel},
        {ui->actionabout, &MainWindow::GUI_About},
        {ui->actionLicense, &MainWindow::GUI_License},
        {ui->actionIntroduce, &MainWindow::GUI_Introduce},
        {ui->actionVideo, &MainWindow::Open_Video},
    };
    // clang-format on
    for (const Row &row : rows)
        connect(row.action, &QAction::triggered, this, row.slot);
}

// The window as it looks behind the start's questions, before a port is chosen.
void MainWindow::prepareForm()
{
    for (QLabel *unused :
         {ui->label_core0clk_fmin_7, ui->label_core0clk_fmin_8, ui->label_core0clk_fmin_9, ui->label_core0clk_fmin_10})
        unused->hide();
    for (QTextEdit *box : findChildren<QTextEdit *>())
        textview::prepare(*box);
    ui->textBrowser_temp->document()->setMaximumBlockCount(kMaxMessages);
    ui->tabWidget_safety->setCurrentIndex(0);
    ui->tabWidget_security->setCurrentIndex(0);
    m_portState = new ElidedLabel(this);
    m_portState->setContentsMargins(6, 0, 0, 0);
    m_portState->setAccessibleName(QStringLiteral("Serial port"));
    statusBar()->addWidget(m_portState, 1);
    m_line = new LineStatus(*this);
    connect(m_line, &LineStatus::portChosen, this, &MainWindow::usePort);
    connect(m_line, &LineStatus::portFound, this, &MainWindow::reopenPort);
    m_line->setRecorder(*m_recorder);
    showPortState();
    prepareInputs();
    installKeys(*this, *ui);
}

// Inputs accept only characters that the board can read.
void MainWindow::prepareInputs()
{
    const auto restrict = [](const QList<QLineEdit *> &fields, const char *pattern, const char *example) {
        for (QLineEdit *field : fields) {
            field->setValidator(
                new QRegularExpressionValidator(QRegularExpression(QString::fromLatin1(pattern)), field));
            field->setPlaceholderText(QString::fromLatin1(example));
        }
    };
    restrict({ui->lineEdit_memu_1, ui->lineEdit_memu_2, ui->lineEdit_memu_3, ui->lineEdit_memu_4, ui->lineEdit_memu_5,
              ui->lineEdit_reg_writedata, ui->lineEdit_reg_turnonsoft1, ui->lineEdit_reg_turnonsoft2,
              ui->lineEdit_reg_turnonhard},
             "[a-fA-F0-9]+$", "Hex: 0-F");
    restrict({ui->lineEdit_intcm1, ui->lineEdit_intcm1_2}, "[0-9]+$", "0-9");
}

// Idle colours, leftovers out of sight, drop-down lists that the style sheet reaches.
void MainWindow::prepareFields()
{
    const auto labels = findChildren<QLabel *>();
    for (QLabel *label : labels) {
        const QVariant colour = label->property("indicator");
        if (colour.isValid())
            indicator::paint(label, colour == QLatin1String("white") ? indicator::kWhite : indicator::kGrey);
    }
    for (QLabel *legend : {ui->label_BIST_legend_passed, ui->label_BIST_legend_reset, ui->label_BIST_legend_none})
        indicator::mark(legend);
    ui->tabWidget_function->removeTab(ui->tabWidget_function->indexOf(ui->tab_commandLine));
    ui->checkBox_softlock_2->hide();
    ui->checkBox_hardlock_2->hide();
    const auto boxes = findChildren<QComboBox *>();
    for (QComboBox *box : boxes)
        box->setView(new QListView(box));
}

void MainWindow::on_tabWidget_safety_currentChanged(int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(pageRequests)))
        return;
    const PageRequest &request = pageRequests[index];
    if (!request.first.isEmpty())
        sendCommand(request.first);
    if (!request.second.isEmpty()) {
        delayMs(kRequestGapMs);
        sendCommand(request.second);
    }
}
