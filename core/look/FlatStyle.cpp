#include "core/look/FlatStyle.h"

#include "core/look/Icons.h"
#include "core/look/SharedPalette.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFocusFrame>
#include <QGroupBox>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include <utility>

namespace {

constexpr qreal radius = 4;
constexpr int titleBarHeight = 34;

QColor blend(const QColor& a, const QColor& b, qreal share) {
    return QColor::fromRgbF(float(a.redF() * (1 - share) + b.redF() * share),
                            float(a.greenF() * (1 - share) + b.greenF() * share),
                            float(a.blueF() * (1 - share) + b.blueF() * share));
}

/// For lines that only separate.
QColor lineColor(const QPalette& palette) {
    return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), .22);
}

/// For borders of whatever can be edited or pressed.
QColor borderColor(const QPalette& palette) {
    return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), .52);
}

QColor accentColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}

void roundedBox(QPainter& painter, const QRect& rect, const QBrush& fill, const QColor& line,
                qreal width = 1) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line.alpha() == 0 ? QPen(Qt::NoPen) : QPen(line, width));
    painter.setBrush(fill);
    const qreal inset = width / 2;
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

/// The face of a push button; the default button, which Return presses, is filled with the accent colour.
void buttonFace(const QStyleOption& option, QPainter& painter) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool main = enabled && button && (button->features & QStyleOptionButton::DefaultButton);
    const bool down = option.state & (QStyle::State_Sunken | QStyle::State_On);
    const bool over = enabled && (option.state & QStyle::State_MouseOver);
    const QPalette& palette = option.palette;
    const QColor accent = accentColor(palette);
    QColor fill = main ? accent : palette.color(QPalette::Button);
    if (!enabled)
        fill = blend(palette.color(QPalette::Window), palette.color(QPalette::Button), .4);
    if (down || over)
        fill = blend(fill, main ? QColor(Qt::black) : accent, down ? .22 : .1);
    const bool focused = option.state & QStyle::State_HasFocus;
    roundedBox(painter, option.rect, fill, main || focused ? accent : borderColor(palette));
    if (focused && enabled) // a second inner line marks the focus even on the accent colour
        roundedBox(painter, option.rect.adjusted(2, 2, -2, -2), Qt::NoBrush,
                   main ? QColor(Qt::white) : accent);
}

void fieldFrame(const QStyleOption& option, QPainter& painter) {
    const bool focused = (option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_Enabled);
    const QColor line = focused ? accentColor(option.palette) : borderColor(option.palette);
    roundedBox(painter, option.rect, Qt::NoBrush, line, focused ? 1.6 : 1);
}

/// The indicator of an option button or check box.
void indicator(const QStyleOption& option, QPainter& painter, bool round) {
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool on = option.state & QStyle::State_On;
    const bool marked = on || option.state & QStyle::State_HasFocus || option.state & QStyle::State_MouseOver;
    const QColor accent = accentColor(option.palette);
    const QColor line = borderColor(option.palette);
    const qreal side = std::min(option.rect.width(), option.rect.height()) - 1;
    const QRectF box(option.rect.center().x() - side / 2 + .5, option.rect.center().y() - side / 2 + .5, side,
                     side);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(enabled && marked ? accent : line, 1.2));
    painter.setBrush(on && !round ? QBrush(enabled ? accent : line) : option.palette.brush(QPalette::Base));
    if (round)
        painter.drawEllipse(box);
    else
        painter.drawRoundedRect(box, 3, 3);
    if (on && round) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(enabled ? accent : line);
        painter.drawEllipse(box.center(), side * .27, side * .27);
    } else if (on) {
        painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF c = box.center();
        const QPointF tick[] = {c + QPointF(-side * .24, 0), c + QPointF(-side * .06, side * .2),
                                c + QPointF(side * .26, -side * .2)};
        painter.drawPolyline(tick, 3);
    }
    painter.restore();
}

void titleBarButton(QPainter& painter, const QRect& rect, QStyle::SubControl part, bool over, bool down,
                    const QColor& ink) {
    if (over || down)
        roundedBox(painter, rect.adjusted(2, 4, -2, -4),
                   part == QStyle::SC_TitleBarCloseButton ? QColor(0xC4, 0x3A, 0x31)
                                                          : QColor(ink.red(), ink.green(), ink.blue(), 50),
                   Qt::transparent);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen((over || down) && part == QStyle::SC_TitleBarCloseButton ? QColor(Qt::white) : ink,
                        1.3, Qt::SolidLine, Qt::RoundCap));
    const QPointF c = QRectF(rect).center();
    constexpr qreal r = 4.5;
    switch (part) {
    case QStyle::SC_TitleBarCloseButton:
        painter.drawLine(c + QPointF(-r, -r), c + QPointF(r, r));
        painter.drawLine(c + QPointF(-r, r), c + QPointF(r, -r));
        break;
    case QStyle::SC_TitleBarMaxButton:
        painter.drawRect(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r));
        break;
    case QStyle::SC_TitleBarNormalButton:
        painter.drawRect(QRectF(c.x() - r, c.y() - r + 2, 2 * r - 2, 2 * r - 2));
        painter.drawLine(c + QPointF(-r + 2, -r), c + QPointF(r, -r));
        painter.drawLine(c + QPointF(r, -r), c + QPointF(r, r - 2));
        break;
    default:
        painter.drawLine(c + QPointF(-r, 1), c + QPointF(r, 1));
    }
    painter.restore();
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FlatStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (dynamic_cast<QAbstractButton*>(widget) || dynamic_cast<QComboBox*>(widget) ||
        dynamic_cast<QMdiSubWindow*>(widget))
        widget->setAttribute(Qt::WA_Hover);
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_TitleBarHeight:
        return titleBarHeight;
    case PM_MdiSubWindowFrameWidth:
    case PM_ToolBarFrameWidth:
        return 1;
    case PM_ToolBarItemSpacing:
        return 2;
    case PM_ToolBarItemMargin:
        return 4;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_FocusFrameHMargin: // also the margin of list items, which must line up with the headings
        return dynamic_cast<const QFocusFrame*>(widget) ? 0 : 3;
    case PM_FocusFrameVMargin: // a picture draws its focus ring inside itself, where nothing clips it
        return dynamic_cast<const QFocusFrame*>(widget) ? 0
                                                        : QProxyStyle::pixelMetric(metric, option, widget);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    switch (hint) {
    case SH_UnderlineShortcut: // a mnemonic that works must be visible
    case SH_TitleBar_NoBorder:
    case SH_FocusFrame_AboveWidget:
        return 1;
    case SH_ItemView_ActivateItemOnSingleClick: // list rows open on a double click on every desktop
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_FocusFrame_Mask:
        return 0;
    case SH_DialogButtonLayout: // as on the screens: Cancel, then OK
        return QDialogButtonBox::GnomeLayout;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        buttonFace(*option, *painter);
        return;
    case PE_FrameDefaultButton:
        return;
    case PE_PanelButtonTool:
        if (option->state & (State_Sunken | State_On | State_MouseOver) && option->state & State_Enabled)
            roundedBox(*painter, option->rect,
                       blend(option->palette.color(QPalette::Window), accentColor(option->palette),
                             option->state & (State_Sunken | State_On) ? .28 : .12),
                       Qt::transparent);
        return;
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame && frame->lineWidth > 0) {
            const bool readOnly = option->state & State_ReadOnly;
            roundedBox(*painter, option->rect,
                       option->palette.brush(readOnly ? QPalette::Window : QPalette::Base), Qt::transparent);
            fieldFrame(*option, *painter);
            return;
        }
        break;
    case PE_FrameLineEdit:
        fieldFrame(*option, *painter);
        return;
    case PE_Frame: // around lists and text areas
        painter->save();
        painter->setPen(option->state & State_HasFocus ? accentColor(option->palette)
                                                       : borderColor(option->palette));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    case PE_IndicatorRadioButton:
    case PE_IndicatorCheckBox:
        indicator(*option, *painter, element == PE_IndicatorRadioButton);
        return;
    case PE_FrameGroupBox: { // the title goes above the frame
        const auto* group = dynamic_cast<const QGroupBox*>(widget);
        const int title = group && !group->title().isEmpty() ? option->fontMetrics.height() + 4 : 0;
        roundedBox(*painter, option->rect.adjusted(0, title, 0, 0),
                   option->palette.brush(QPalette::AlternateBase), lineColor(option->palette));
        return;
    }
    case PE_FrameWindow:
        painter->save();
        painter->setPen(option->state & State_Active ? accentColor(option->palette)
                                                     : lineColor(option->palette));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    case PE_FrameFocusRect:
        if (dynamic_cast<const QAbstractButton*>(widget)) {
            roundedBox(*painter, option->rect, Qt::NoBrush, accentColor(option->palette));
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
    case CE_PushButtonLabel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            button && (button->features & QStyleOptionButton::DefaultButton) &&
            option->state & State_Enabled) {
            QStyleOptionButton onAccent(*button);
            onAccent.palette.setColor(QPalette::ButtonText, Qt::white);
            QProxyStyle::drawControl(element, &onAccent, painter, widget);
            return;
        }
        break;
    case CE_FocusFrame: // around a clickable picture
        roundedBox(*painter, option->rect, Qt::NoBrush, accentColor(option->palette));
        return;
    case CE_MenuBarItem: // without the line that the base style draws under each title
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            const bool chosen = item->state & State_Selected;
            painter->fillRect(item->rect,
                              item->palette.brush(chosen ? QPalette::Highlight : QPalette::Window));
            const int hidden =
                proxy()->styleHint(SH_UnderlineShortcut, option, widget) ? 0 : Qt::TextHideMnemonic;
            drawItemText(painter, item->rect,
                         Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine | hidden, item->palette,
                         item->state & State_Enabled, item->text,
                         chosen ? QPalette::HighlightedText : QPalette::WindowText);
        }
        return;
    case CE_ToolBar:
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, option->palette.brush(QPalette::Window));
        if (element == CE_ToolBar)
            painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                              lineColor(option->palette));
        return;
    case CE_HeaderSection:
        if (SharedPalette::draws<QStyleOptionHeader>(option, [&](const QStyleOption* shared) {
                QProxyStyle::drawControl(element, shared, painter, widget);
            }))
            return;
        break;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (control == CC_GroupBox) {
        painter->save();
        QFont font = painter->font();
        font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        painter->restore();
        return;
    }
    if (control == CC_MdiControls) { // of an inner window that fills the main one
        for (const auto& [button, mark] : {std::pair(SC_MdiMinButton, SC_TitleBarMinButton),
                                           {SC_MdiNormalButton, SC_TitleBarNormalButton},
                                           {SC_MdiCloseButton, SC_TitleBarCloseButton}}) {
            if (!(option->subControls & button))
                continue;
            const bool under = option->activeSubControls & button;
            titleBarButton(*painter, proxy()->subControlRect(control, option, button, widget), mark,
                           under && option->state & State_MouseOver, under && option->state & State_Sunken,
                           option->palette.color(QPalette::WindowText));
        }
        return;
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || !bar) {
        const auto draw = [&](const QStyleOptionComplex* shared) {
            QProxyStyle::drawComplexControl(control, shared, painter, widget);
        };
        if (!SharedPalette::draws<QStyleOptionComboBox>(option, draw) &&
            !SharedPalette::draws<QStyleOptionSpinBox>(option, draw))
            draw(option);
        return;
    }
    const QPalette& palette = bar->palette;
    const bool active = bar->titleBarState & State_Active;
    const QColor back = active
                            ? accentColor(palette)
                            : blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), .1);
    const QColor ink = active ? QColor(Qt::white) : palette.color(QPalette::WindowText);
    painter->fillRect(bar->rect, back);
    const QRect label = proxy()->subControlRect(CC_TitleBar, bar, SC_TitleBarLabel, widget);
    painter->save();
    painter->setPen(ink);
    QFont font = painter->font();
    font.setWeight(QFont::DemiBold);
    painter->setFont(font);
    painter->drawText(label.adjusted(4, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                      painter->fontMetrics().elidedText(bar->text, Qt::ElideRight, label.width() - 8));
    painter->restore();
    const bool maximized = bar->titleBarState & Qt::WindowMaximized;
    const bool minimized = bar->titleBarState & Qt::WindowMinimized;
    for (const SubControl part :
         {SC_TitleBarMinButton, SC_TitleBarMaxButton, SC_TitleBarNormalButton, SC_TitleBarCloseButton}) {
        const QRect rect = proxy()->subControlRect(CC_TitleBar, bar, part, widget);
        const bool shown = part == SC_TitleBarNormalButton ? maximized || minimized
                           : part == SC_TitleBarMaxButton  ? !maximized
                           : part == SC_TitleBarMinButton  ? !minimized
                                                           : true;
        if (!shown || !rect.isValid() || !(bar->subControls & part))
            continue;
        const bool under = bar->activeSubControls & part;
        titleBarButton(*painter, rect, part, under && bar->state & State_MouseOver,
                       under && bar->state & State_Sunken, ink);
    }
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_LineEdit:
    case CT_ComboBox:
    case CT_PushButton:
    case CT_ItemViewItem:
        size.rheight() += 4;
        break;
    case CT_HeaderSection:
        size.rheight() += 6;
        break;
    case CT_MenuItem:
    case CT_RadioButton:
        size.rheight() += 2;
        break;
    default:
        break;
    }
    return size;
}

QIcon FlatStyle::standardIcon(StandardPixmap standard, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (standard) {
    case SP_MessageBoxInformation:
        return Appearance::icon("message-information");
    case SP_MessageBoxWarning:
        return Appearance::icon("message-warning");
    case SP_MessageBoxCritical:
        return Appearance::icon("message-critical");
    case SP_MessageBoxQuestion:
        return Appearance::icon("message-question");
    // Qt's own are image files, and the first would load every plugin for images at the start.
    case SP_ToolBarHorizontalExtensionButton:
    case SP_ToolBarVerticalExtensionButton:
        return Appearance::icon("more");
    case SP_LineEditClearButton:
        return Appearance::icon("cancel");
    default:
        return QProxyStyle::standardIcon(standard, option, widget);
    }
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_GroupBox && part == SC_GroupBoxLabel) { // room for the bolder title
        const QRect label = QProxyStyle::subControlRect(control, option, part, widget);
        return label.adjusted(0, 0, label.width() / 4, 0);
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    // From the right: close, maximise or restore, minimise; the title takes the rest.
    constexpr int width = 30;
    const bool maximized = bar->titleBarState & Qt::WindowMaximized;
    const bool minimized = bar->titleBarState & Qt::WindowMinimized;
    const bool maximizes = bar->titleBarFlags & Qt::WindowMaximizeButtonHint;
    const bool minimizes = bar->titleBarFlags & Qt::WindowMinimizeButtonHint;
    const auto place = [&](int fromRight) {
        const QRect rect(bar->rect.right() - 4 - width * fromRight, bar->rect.top(), width,
                         bar->rect.height());
        return visualRect(bar->direction, bar->rect, rect);
    };
    switch (part) {
    case SC_TitleBarCloseButton:
        return place(1);
    case SC_TitleBarMaxButton:
        return maximizes && !maximized ? place(2) : QRect();
    case SC_TitleBarNormalButton:
        return maximized || minimized ? place(minimized ? 3 : 2) : QRect();
    case SC_TitleBarMinButton:
        return minimizes && !minimized ? place(maximizes ? 3 : 2) : QRect();
    case SC_TitleBarLabel:
        return bar->rect.adjusted(8, 0, -4 - width * 3, 0);
    default:
        return {};
    }
}
