#include "Look.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>

namespace Look {

namespace {

QPalette palette()
{
    QPalette colours(text, panel);
    colours.setColor(QPalette::Window, background);
    colours.setColor(QPalette::Base, QColor(18, 74, 84));
    colours.setColor(QPalette::AlternateBase, panel);
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::PlaceholderText, QColor(255, 255, 255, 130));
    colours.setColor(QPalette::Button, panel);
    colours.setColor(QPalette::ButtonText, text);
    colours.setColor(QPalette::Highlight, strip);
    colours.setColor(QPalette::HighlightedText, QColor(10, 40, 48));
    colours.setColor(QPalette::Link, QColor(178, 235, 242));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, QColor(255, 255, 255, 110));
    return colours;
}

/// For what lies outside the windows' own rules.
QString sharedRules()
{
    return QStringLiteral(R"(
QToolTip { background-color: rgb(16, 60, 68); color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205);
    padding: 4px; }
QMenu { background-color: rgb(25, 90, 100); color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205);
    padding: 4px; }
QMenu::item { padding: 6px 28px 6px 16px; border-radius: 3px; background-color: transparent; }
QMenu::item:selected { background-color: rgb(8, 115, 140); }
QMenu::item:disabled { color: rgba(255, 255, 255, 110); }
QMenu::separator { height: 1px; margin: 4px 8px; background-color: rgb(107, 176, 205); }
QScrollBar:vertical { width: 12px; margin: 0; background: transparent; }
QScrollBar:horizontal { height: 12px; margin: 0; background: transparent; }
QScrollBar::handle { background: rgba(255, 255, 255, 110); border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: rgba(255, 255, 255, 170); }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)");
}

QString controlRules()
{
    return QStringLiteral(R"(
QPushButton { background-color: rgb(25, 90, 100); color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205);
    border-radius: 4px; padding: 6px 18px; }
QPushButton:hover { background-color: rgb(36, 112, 124); }
QPushButton:pressed, QPushButton:checked { background-color: rgb(14, 62, 70); }
QPushButton:disabled { color: rgba(255, 255, 255, 110); border-color: rgba(107, 176, 205, 110); }
QPushButton:focus { border: 2px solid rgb(255, 213, 79); padding: 5px 17px; }
QComboBox, QLineEdit, QAbstractSpinBox, QKeySequenceEdit { background-color: rgb(18, 74, 84);
    color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205); border-radius: 4px; padding: 4px 8px;
    selection-background-color: rgb(107, 176, 205); selection-color: rgb(10, 40, 48); }
QComboBox:focus, QLineEdit:focus, QAbstractSpinBox:focus, QKeySequenceEdit:focus {
    border: 1px solid rgb(255, 213, 79); }
QComboBox:disabled, QLineEdit:disabled, QAbstractSpinBox:disabled { color: rgba(255, 255, 255, 110);
    border-color: rgba(107, 176, 205, 110); }
QComboBox QAbstractItemView { background-color: rgb(25, 90, 100); color: rgb(255, 255, 255);
    border: 1px solid rgb(107, 176, 205); selection-background-color: rgb(8, 115, 140); outline: none; }
QCheckBox, QRadioButton { color: rgb(255, 255, 255); background-color: transparent; spacing: 8px; padding: 4px;
    border: 1px solid transparent; border-radius: 4px; }
QCheckBox:focus, QRadioButton:focus { border-color: rgb(255, 213, 79); }
QCheckBox:disabled, QRadioButton:disabled { color: rgba(255, 255, 255, 110); }
)");
}

} // namespace

void install(QApplication& application)
{
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette());
    application.setStyleSheet(sharedRules());
}

void dress(QWidget& container)
{
    container.setStyleSheet(container.styleSheet() + controlRules());
}

void paintBackground(QWidget& widget)
{
    QStyleOption option;
    option.initFrom(&widget);
    QPainter painter(&widget);
    widget.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &widget);
}

} // namespace Look
