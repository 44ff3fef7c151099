#include "Look.h"

#include <QApplication>
#include <QLineEdit>
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

QString buttonRules()
{
    return QStringLiteral(R"(
QPushButton { background-color: rgb(25, 90, 100); color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205);
    border-radius: 4px; padding: 6px 18px; }
QPushButton:hover { background-color: rgb(36, 112, 124); }
QPushButton:pressed, QPushButton:checked { background-color: rgb(14, 62, 70); }
QPushButton:disabled { color: rgba(255, 255, 255, 110); border-color: rgba(107, 176, 205, 110); }
QPushButton:focus { border: 2px solid rgb(255, 213, 79); padding: 5px 17px; }
)");
}

void addRules(QWidget& container, const QString& rules)
{
    container.ensurePolished(); // the toolkit reads a second sheet only on a polished widget
    container.setStyleSheet(container.styleSheet() + rules);
}

QString fieldRules()
{
    return QStringLiteral(R"(
QComboBox, QLineEdit, QAbstractSpinBox, QKeySequenceEdit { background-color: rgb(18, 74, 84);
    color: rgb(255, 255, 255); border: 1px solid rgb(107, 176, 205); border-radius: 4px; padding: 3px 6px;
    selection-background-color: rgb(107, 176, 205); selection-color: rgb(10, 40, 48); }
QComboBox:focus, QLineEdit:focus, QAbstractSpinBox:focus, QKeySequenceEdit:focus {
    border: 2px solid rgb(255, 213, 79); padding: 2px 5px; }
QComboBox:disabled, QLineEdit:disabled, QAbstractSpinBox:disabled { color: rgba(255, 255, 255, 110);
    border-color: rgba(107, 176, 205, 110); }
QLineEdit[readOnly="true"] { background-color: rgb(14, 98, 116); }
QLineEdit[unusable="true"] { background-color: rgb(124, 36, 40); }
QComboBox { combobox-popup: 0; }
QComboBox::drop-down { border: none; width: 20px; }
QComboBox::down-arrow { image: url(:/images/common/images/common/arrow_down.png); width: 12px; height: 12px; }
QComboBox QAbstractItemView { background-color: rgb(25, 90, 100); color: rgb(255, 255, 255);
    border: 1px solid rgb(107, 176, 205); selection-background-color: rgb(8, 115, 140);
    selection-color: rgb(255, 255, 255); outline: none; padding: 2px; }
)");
}

QString groupRules()
{
    return QStringLiteral(R"(
QGroupBox { border: 1px solid rgb(107, 176, 205); border-radius: 6px; margin-top: 1.3ex; padding-top: 1.3ex; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 12px; padding: 0 6px; }
)");
}

QString progressRules()
{
    return QStringLiteral(R"(
QProgressBar { background-color: rgb(18, 74, 84); border: none; border-radius: 4px; }
QProgressBar::chunk { background-color: rgb(107, 176, 205); border-radius: 4px; }
)");
}

QString sliderRules()
{
    return QStringLiteral(R"(
QSlider { border: 2px solid transparent; border-radius: 4px; min-height: 24px; }
QSlider:focus { border-color: rgb(255, 213, 79); }
QSlider::groove:horizontal { height: 6px; margin: 0 3px; border-radius: 3px; background-color: rgb(18, 74, 84); }
QSlider::sub-page:horizontal { height: 6px; margin: 0 3px; border-radius: 3px;
    background-color: rgb(107, 176, 205); }
QSlider::handle:horizontal { width: 16px; margin: -5px -3px; border-radius: 8px;
    background-color: rgb(255, 255, 255); }
QSlider::handle:horizontal:hover { background-color: rgb(178, 235, 242); }
)");
}

QString tickRules()
{
    return QStringLiteral(R"(
QCheckBox, QRadioButton { color: rgb(255, 255, 255); background-color: transparent; spacing: 8px; padding: 3px;
    border: 2px solid transparent; border-radius: 4px; }
QCheckBox:focus, QRadioButton:focus { border-color: rgb(255, 213, 79); }
QCheckBox:disabled, QRadioButton:disabled { color: rgba(255, 255, 255, 110); }
QCheckBox::indicator, QRadioButton::indicator { width: 16px; height: 16px;
    border: 1px solid rgb(255, 255, 255); background-color: rgb(18, 74, 84); }
QCheckBox::indicator { border-radius: 3px; }
QRadioButton::indicator { border-radius: 9px; }
QCheckBox::indicator:hover, QRadioButton::indicator:hover { background-color: rgb(36, 112, 124); }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: rgba(255, 255, 255, 110); }
QCheckBox::indicator:checked { background-color: rgb(67, 160, 71);
    image: url(:/images/common/images/common/check.png); }
QRadioButton::indicator:checked { background-color: qradialgradient(cx: 0.5, cy: 0.5, radius: 0.5, fx: 0.5, fy: 0.5,
    stop: 0 white, stop: 0.45 white, stop: 0.55 rgb(67, 160, 71), stop: 1 rgb(67, 160, 71)); }
)");
}

// What a field says while it is empty shall not be taken for what it holds.
void slantWhileEmpty(QLineEdit& edit)
{
    const auto slant = [&edit] {
        QFont font = edit.font();
        font.setItalic(edit.text().isEmpty());
        edit.setFont(font);
    };
    QObject::connect(&edit, &QLineEdit::textChanged, &edit, slant);
    slant();
}

void addFieldRules(QWidget& container, const QString& rules)
{
    addRules(container, rules);
    for (QLineEdit* edit : container.findChildren<QLineEdit*>())
        if (!edit->placeholderText().isEmpty())
            slantWhileEmpty(*edit);
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
    addFieldRules(container,
                  buttonRules() + fieldRules() + tickRules() + groupRules() + progressRules() +
                      sliderRules());
}

void dressFields(QWidget& container)
{
    addFieldRules(container, fieldRules() + tickRules() + groupRules());
}

QIcon dimmable(const QIcon& icon, const QSize& size)
{
    QPixmap dim = icon.pixmap(size);
    {
        QPainter painter(&dim);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(dim.rect(), QColor(0, 0, 0, 85));
    }
    QIcon both = icon;
    both.addPixmap(dim, QIcon::Disabled);
    return both;
}

void paintBackground(QWidget& widget)
{
    QStyleOption option;
    option.initFrom(&widget);
    QPainter painter(&widget);
    widget.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &widget);
}

void paintFocusRing(QPainter& painter, const QRect& frame)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(focus, 2));
    painter.drawRoundedRect(QRectF(frame).adjusted(1.5, 1.5, -1.5, -1.5), 5, 5);
}

} // namespace Look
