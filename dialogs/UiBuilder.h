#pragma once

#include <QDialog>
#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <initializer_list>

/*
 * Pieces of which every setupUi here is made. All geometry is absolute, in pixels, and every widget has a
 * font of 9 points.
 */

inline QFont pointFont(int points)
{
    QFont font;
    font.setPointSize(points);
    return font;
}

template <class Widget>
Widget* placeWidget(QWidget* parent, const char* name, const QRect& geometry)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QLatin1String(name));
    widget->setGeometry(geometry);
    widget->setFont(pointFont(9));
    return widget;
}

/** A button that Return does not press: the dialogs treat that key themselves. */
inline QPushButton* placeButton(QWidget* parent, const char* name, const QRect& geometry,
                                const QString& text = {})
{
    auto* button = placeWidget<QPushButton>(parent, name, geometry);
    button->setAutoDefault(false);
    button->setText(text);
    return button;
}

inline QLabel* placeLabel(QWidget* parent, const char* name, const QRect& geometry, const QString& text = {},
                          Qt::FocusPolicy focus = Qt::NoFocus)
{
    auto* label = placeWidget<QLabel>(parent, name, geometry);
    label->setText(text);
    label->setFocusPolicy(focus);
    return label;
}

/** Names a window and gives it one size for good. */
inline void shapeWindow(QWidget* window, const char* name, const QSize& size)
{
    window->setObjectName(QLatin1String(name));
    window->setFixedSize(size);
}

/** The order in which Tab walks. */
inline void chainTabOrder(std::initializer_list<QWidget*> widgets)
{
    QWidget* last = nullptr;
    for (QWidget* widget : widgets) {
        if (last)
            QWidget::setTabOrder(last, widget);
        last = widget;
    }
}
