#include "Lumatile/widgets/WidgetStyle.h"

#include <QApplication>
#include <QPalette>
#include <QString>
#include <QWidget>

#include <cmath>
#include <utility>
#include <vector>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/MnemonicLines.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double bodyPoints = 13;

// Names in angle brackets are colours and lengths.
constexpr const char* rules = R"(
* { outline: none; }
QWidget#settingsWindow, QStackedWidget, QScrollArea, QWidget#page { background: <window>; }
QListWidget#sidebar {
    background: <sidebar>; border: none; border-right: 1px solid <separator>; padding-top: <s20>; }
QListWidget#sidebar::item {
    padding: <s4> <s10>; margin: 1px <s10>; border-radius: 6px; color: <secondaryLabel>; }
QListWidget#sidebar::item:hover { background: <card>; }
QListWidget#sidebar::item:selected { background: <control>; color: <label>; }
QListWidget#areas {
    background: <card>; border: 1px solid <separator>; border-radius: 10px; padding: 4px; }
QListWidget#areas::item { padding: 3px <s6>; border-radius: 5px; color: <label>; }
QListWidget#areas::item:hover:!disabled { background: <control>; }
QListWidget#areas::item:selected { background: <controlHover>; color: <label>; }
QListWidget#areas::item:disabled { color: <secondaryLabel>; }
QFrame#card { background: <card>; border: 1px solid <separator>; border-radius: 10px; }
QFrame#rowLine { background: <separator>; border: none; max-height: 1px; min-height: 1px; }
QLabel { color: <label>; background: transparent; }
QLabel[tone="secondary"] { color: <secondaryLabel>; }
QLabel[tone="warning"] { color: <warning>; }
QLabel:disabled { color: <disabledLabel>; }
QPushButton, QToolButton, QComboBox, QLineEdit {
    background: <control>; color: <label>; border: 1px solid <separator>; border-radius: 6px;
    padding: <s4> <s10>; }
QToolButton { padding: <s4>; }
QToolButton#inFrame { background: transparent; border: 1px solid transparent; padding: 2px; }
QToolButton#inFrame:hover { background: <controlHover>; }
QToolButton#inFrame:focus { border: 1px solid <accent>; }
QPushButton:hover, QToolButton:hover, QComboBox:hover { background: <controlHover>; }
QPushButton:pressed, QToolButton:pressed { background: <card>; }
QPushButton:focus, QToolButton:focus, QComboBox:focus, QLineEdit:focus {
    border: 1px solid <accent>; }
QPushButton:disabled, QToolButton:disabled { color: <disabledLabel>; background: <card>; }
QPushButton[tone="destructive"] { color: <accent>; }
QPushButton[tone="primary"] {
    background: <accent>; color: <window>; border: 2px solid <accent>; padding: <s6> <s10>; }
QPushButton[tone="primary"]:hover { background: <accentHover>; border-color: <accentHover>; }
QPushButton[tone="primary"]:pressed { background: <frame>; border-color: <frame>; }
QPushButton[tone="primary"]:focus { border: 2px solid <label>; }
QLabel#badge {
    background: <accent>; color: <window>; border-radius: 6px; padding: 1px <s6>; }
QLineEdit { selection-background-color: <accent>; selection-color: <window>; }
QComboBox::drop-down { border: none; width: <s20>; }
QComboBox::down-arrow { image: none; }
QPushButton#menuButton { padding-right: <s30>; }
QPushButton::menu-indicator { image: none; width: 0; }
QPlainTextEdit {
    background: <card>; color: <secondaryLabel>; border: 1px solid <separator>;
    border-radius: 10px; padding: <s6>; }
QPlainTextEdit:focus { border: 1px solid <accent>; }
QCheckBox { color: <label>; spacing: <s6>; }
QComboBox QAbstractItemView {
    background: <control>; color: <label>; border: 1px solid <separator>;
    selection-background-color: <controlHover>; selection-color: <label>; }
QComboBox QAbstractItemView::item {
    padding: <s4> <s10>; border: none; border-radius: 4px; color: <label>; }
QComboBox QAbstractItemView::item:selected { background: <controlHover>; }
QMenu { background: <control>; color: <label>; border: 1px solid <separator>; padding: 4px; }
QMenu::item { padding: <s4> <s20>; border-radius: 4px; }
QMenu::item:selected { background: <controlHover>; }
QMenu::separator { background: <separator>; height: 1px; margin: 4px; }
QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }
QScrollBar::handle:vertical { background: <separator>; border-radius: 3px; min-height: 30px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QSlider { min-height: 24px; }
QSlider::groove:horizontal { background: <separator>; height: 4px; border-radius: 2px; }
QSlider::sub-page:horizontal { background: <accent>; border-radius: 2px; }
QSlider::sub-page:horizontal:disabled { background: <disabledLabel>; }
QSlider::handle:horizontal {
    background: <label>; width: 16px; height: 16px; margin: -6px 0; border-radius: 8px; }
QSlider::handle:horizontal:focus { border: 2px solid <accent>; }
QSlider::handle:horizontal:disabled { background: <disabledLabel>; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 2px; }
QScrollBar::handle:horizontal { background: <separator>; border-radius: 3px; min-width: 30px; }
QFileDialog QTreeView, QFileDialog QListView {
    background: <card>; color: <label>; border: 1px solid <separator>; border-radius: 6px; }
QHeaderView { background: <card>; }
QHeaderView::section {
    background: <control>; color: <secondaryLabel>; border: none; padding: <s4> <s6>; }
QToolTip { background: <control>; color: <label>; border: 1px solid <separator>; padding: 4px; }
)";

QPalette darkPalette() {
    QPalette palette;
    const std::vector<std::pair<QPalette::ColorRole, QColor>> colors{
        {QPalette::Window, WidgetColors::window()},
        {QPalette::WindowText, WidgetColors::label()},
        {QPalette::Base, WidgetColors::card()},
        {QPalette::AlternateBase, WidgetColors::window()},
        {QPalette::Text, WidgetColors::label()},
        {QPalette::Button, WidgetColors::control()},
        {QPalette::ButtonText, WidgetColors::label()},
        {QPalette::BrightText, WidgetColors::label()},
        {QPalette::ToolTipBase, WidgetColors::control()},
        {QPalette::ToolTipText, WidgetColors::label()},
        {QPalette::PlaceholderText, WidgetColors::secondaryLabel()},
        {QPalette::Highlight, WidgetColors::accent()},
        {QPalette::HighlightedText, WidgetColors::window()},
        {QPalette::Link, WidgetColors::accent()},
    };
    for (const auto& [role, color] : colors) {
        palette.setColor(role, color);
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, WidgetColors::disabledLabel());
    }
    return palette;
}

QString styleSheet() {
    QString sheet = QString::fromLatin1(rules);
    const std::vector<std::pair<const char*, QColor>> colors{
        {"window", WidgetColors::window()},
        {"sidebar", WidgetColors::sidebar()},
        {"card", WidgetColors::card()},
        {"control", WidgetColors::control()},
        {"controlHover", WidgetColors::controlHover()},
        {"separator", WidgetColors::separator()},
        {"accent", WidgetColors::accent()},
        {"accentHover", WidgetColors::accentHover()},
        {"frame", WidgetColors::frameCell()},
        {"label", WidgetColors::label()},
        {"secondaryLabel", WidgetColors::secondaryLabel()},
        {"disabledLabel", WidgetColors::disabledLabel()},
        {"warning", WidgetColors::warning()},
    };
    for (const auto& [name, color] : colors) {
        sheet.replace(QStringLiteral("<%1>").arg(QLatin1String(name)), color.name());
    }
    // Room round text grows with the text.
    for (const int points : {4, 6, 10, 20, 30}) {
        sheet.replace(QStringLiteral("<s%1>").arg(points),
                      QStringLiteral("%1px").arg(
                          static_cast<int>(std::lround(points * AppFonts::pixelsPerPoint()))));
    }
    return sheet;
}

}  // namespace

void WidgetStyle::apply(QWidget& window) {
    MnemonicLines::showIn(window);
    window.setPalette(darkPalette());
    window.setFont(AppFonts::text(bodyPoints));
    window.setStyleSheet(styleSheet());
}

}  // namespace lumatile
