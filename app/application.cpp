// SPDX-License-Identifier: MIT
#include "app/application.h"

#include <QFont>
#include <QPalette>

namespace {

// Settings that Qt reads while the application object is made.
int &prepared(int &argc)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor);
    QGuiApplication::setDesktopSettingsAware(false);
    return argc;
}

struct RoleColour {
    QPalette::ColorRole role;
    QRgb enabled, disabled;
};

// clang-format off
// Every role: the desktop's palette would fill in any that are left out.
constexpr RoleColour roleColours[] = {
    {QPalette::WindowText,      0xFF000000, 0xFF788496},
    {QPalette::Button,          0xFFE8EDF4, 0xFFE8EDF4},
    {QPalette::Light,           0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Midlight,        0xFFF4F7FB, 0xFFF4F7FB},
    {QPalette::Dark,            0xFF8E9BB0, 0xFF8E9BB0},
    {QPalette::Mid,             0xFFB4C0D2, 0xFFB4C0D2},
    {QPalette::Text,            0xFF000000, 0xFF788496},
    {QPalette::BrightText,      0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::ButtonText,      0xFF000000, 0xFF788496},
    {QPalette::Base,            0xFFFFFFFF, 0xFFF0F4F9},
    {QPalette::Window,          0xFFF0F4F9, 0xFFF0F4F9},
    {QPalette::Shadow,          0xFF5A6678, 0xFF5A6678},
    {QPalette::Highlight,       0xFF1A66CC, 0xFFA8B4C6},
    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Link,            0xFF1A66CC, 0xFF788496},
    {QPalette::LinkVisited,     0xFF5A3C8C, 0xFF788496},
    {QPalette::AlternateBase,   0xFFF4F7FB, 0xFFF0F4F9},
    {QPalette::ToolTipBase,     0xFFFFFFEC, 0xFFFFFFEC},
    {QPalette::ToolTipText,     0xFF000000, 0xFF000000},
    {QPalette::PlaceholderText, 0xFF6A7688, 0xFF8E9BB0},
};
// clang-format on
static_assert(std::size(roleColours) == QPalette::NColorRoles - 1, "all roles but NoRole");

QPalette lightPalette()
{
    QPalette palette;
    for (const RoleColour &row : roleColours) {
        palette.setColor(QPalette::All, row.role, QColor(row.enabled));
        palette.setColor(QPalette::Disabled, row.role, QColor(row.disabled));
    }
    return palette;
}

QFont programFont(double scale)
{
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans"), QStringLiteral("Liberation Sans"),
                      QStringLiteral("Sans Serif")});
    font.setPointSizeF(9 * scale);
    font.setWeight(QFont::Normal);
    font.setItalic(false);
    return font;
}

} // namespace

Application::Application(int &argc, char **argv, const QString &name) : QApplication(prepared(argc), argv)
{
    setApplicationName(name);
    setApplicationDisplayName(QStringLiteral("Safety Workbench"));
    setDesktopFileName(name);
    setStyle(QStringLiteral("Fusion"));
    applyLook();
}

void applyLook(double scale)
{
    QApplication::setPalette(lightPalette());
    QApplication::setFont(programFont(scale));
}
