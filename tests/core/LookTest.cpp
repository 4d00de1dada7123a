#include "core/look/Appearance.h"
#include "core/look/IconDrawing.h"
#include "core/look/NameDrawing.h"
#include "core/look/ProgramName.h"
#include "core/look/SharedPalette.h"
#include "core/shell/Dialogs.h"
#include "core/shell/ElidedLabel.h"
#include "core/shell/Printer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDirIterator>
#include <QImage>
#include <QLayout>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QStyleOption>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

/// Relative luminance by WCAG 2.1.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= .03928 ? part / 12.92 : std::pow((part + .055) / 1.055, 2.4);
    };
    return .2126 * linear(color.redF()) + .7152 * linear(color.greenF()) + .0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + .05) / (darker + .05);
}

/// How the marks of an inner window that fills the main one stand out from the menu bar.
double contrastOfMarks(const QPalette& palette) {
    QStyleOptionComplex option;
    option.rect = QRect(0, 0, 54, 18);
    option.palette = palette;
    option.subControls = QStyle::SC_MdiNormalButton;
    const QColor back = palette.color(QPalette::Window);
    QImage picture(option.rect.size(), QImage::Format_RGB32);
    picture.fill(back);
    QPainter painter(&picture);
    QApplication::style()->drawComplexControl(QStyle::CC_MdiControls, &option, &painter);
    double most = 1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            most = std::max(most, contrast(picture.pixelColor(x, y), back));
    return most;
}

} // namespace

TEST(Look, IsReadableInLightAndDark) {
    const QPalette before = QApplication::palette();
    for (const auto scheme : {Appearance::Scheme::Light, Appearance::Scheme::Dark}) {
        Appearance::apply(scheme);
        const QPalette palette = QApplication::palette();
        const auto check = [&](QPalette::ColorGroup group, QPalette::ColorRole ink,
                               QPalette::ColorRole paper) {
            EXPECT_GE(contrast(palette.color(group, ink), palette.color(group, paper)), 4.5)
                << "role " << ink << " on " << paper << " in group " << group << " of scheme " << int(scheme);
        };
        for (const auto group : {QPalette::Active, QPalette::Disabled})
            for (const auto ink : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                   QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited})
                for (const auto paper : {QPalette::Window, QPalette::Base, QPalette::AlternateBase,
                                         QPalette::Button, QPalette::Mid})
                    check(group, ink, paper);
        check(QPalette::Active, QPalette::HighlightedText, QPalette::Highlight);
        const QPalette marked = Appearance::errorPalette(palette);
        EXPECT_GE(contrast(marked.color(QPalette::PlaceholderText), marked.color(QPalette::Base)), 4.5)
            << "the hint of a marked field in scheme " << int(scheme);
        EXPECT_GE(contrastOfMarks(palette), 4.5) << "in scheme " << int(scheme);
    }
    QApplication::setPalette(before);
}

/// What the build has drawn must look as what the program draws at other sizes.
TEST(Look, IconsDrawnByTheBuildAreThoseOfTheirDrawings) {
    int compared = 0;
    for (QDirIterator drawings(":/icons", {"*.svg"}); drawings.hasNext();) {
        QFile drawing(drawings.next());
        ASSERT_TRUE(drawing.open(QIODevice::ReadOnly));
        const QByteArray svg = drawing.readAll();
        for (const int size : Appearance::maskSizes) {
            QFile mask(QString(":/icons/%1-%2.mask").arg(drawings.fileInfo().baseName()).arg(size));
            ASSERT_TRUE(mask.open(QIODevice::ReadOnly)) << mask.fileName().toStdString();
            const QByteArray bytes = mask.readAll();
            for (const QColor color : {QColor(27, 36, 44), QColor(231, 235, 239), QColor(150, 20, 250)}) {
                const QImage shown = Appearance::coloredMasks(bytes, color, {size, size});
                EXPECT_TRUE(shown == Appearance::drawnIcon(svg, color, {size, size}))
                    << mask.fileName().toStdString();
                compared += shown.pixelColor(size / 2, size / 2).alpha() != 0;
            }
        }
    }
    EXPECT_GT(compared, 50);
}

/// The name looks the same whether it is the build's drawing, as at 20 points, or drawn at its size.
TEST(Look, NameDrawnByTheBuildIsThatOfItsOutline) {
    QFile file(":/look/name.path");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QPainterPath outline;
    QDataStream stream(&file);
    stream >> outline;
    for (const int points : {20, 21, 30}) {
        ProgramName name;
        name.setText("Brennoval");
        QFont font;
        font.setPointSize(points);
        name.setFont(font);
        name.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        QImage drawn;
        for (const QColor color : {QColor(10, 200, 90), QColor(231, 235, 239)}) { // then another appearance
            name.setStyleSheet("color: " + color.name() + "; background: transparent");
            name.ensurePolished();
            drawn = Appearance::drawnName(outline, points * 96. / 72, color);
            EXPECT_EQ(name.sizeHint(), drawn.size());
            name.resize(drawn.size());
            QImage shown(drawn.size(), drawn.format());
            shown.fill(Qt::transparent);
            name.render(&shown, {}, {}, {});
            EXPECT_TRUE(shown == drawn) << points << " points in " << color.name().toStdString();
        }
        EXPECT_GT(drawn.pixelColor(int(points * 96. / 72 / 8), drawn.height() / 2).alpha(), 0) << "the B";
    }
}

TEST(Look, OrdersTheButtonsOfMessagesAsScreensDo) {
    Appearance::apply(Appearance::Scheme::Light);
    QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    box.ensurePolished();
    box.resize(box.sizeHint());
    box.layout()->activate();
    EXPECT_LT(box.button(QDialogButtonBox::Cancel)->x(), box.button(QDialogButtonBox::Ok)->x());
}

TEST(Look, EndsATextWithoutRoomInAnEllipsis) {
    ElidedLabel label("Enter the pressures at which the pump starts and stops");
    const QSize whole = label.sizeHint();
    label.resize(whole);
    const QImage shown = label.grab().toImage();
    EXPECT_FALSE(label.isElided());
    EXPECT_LT(label.minimumSizeHint().width(), whole.width() / 10);
    label.resize(whole.width() / 2, whole.height());
    EXPECT_TRUE(label.isElided());
    EXPECT_NE(label.grab().toImage(), shown.copy(label.rect())) << "not cut, but ended";
}

/// What Qt draws for one widget is found again for the next, as long as both have the same colours.
TEST(Look, GivesPalettesOfTheSameColoursOneIdentity) {
    const auto made = [](QPalette::ColorGroup group, Qt::GlobalColor text) {
        QPalette palette(Qt::lightGray);
        palette.setColor(QPalette::Text, text);
        palette.setCurrentColorGroup(group);
        return palette;
    };
    const QPalette first = SharedPalette::of(made(QPalette::Active, Qt::black));
    const QPalette again = SharedPalette::of(made(QPalette::Disabled, Qt::black));
    EXPECT_EQ(first.cacheKey(), again.cacheKey());
    EXPECT_EQ(again.currentColorGroup(), QPalette::Disabled);
    const QPalette other = SharedPalette::of(made(QPalette::Active, Qt::red));
    EXPECT_NE(first.cacheKey(), other.cacheKey());
    EXPECT_EQ(other.color(QPalette::Text), QColor(Qt::red));
}

/// What Return would press in the dialog that a call opens.
QString pressedByReturn(const std::function<void()>& call) {
    QString pressed;
    QTimer::singleShot(0, [&pressed] {
        auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        for (const QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->isDefault())
                pressed += button->text().remove(u'&');
        dialog->reject();
    });
    call();
    return pressed;
}

// Cancel comes first, but Return must not lose what was typed.
TEST(Messages, AreAnsweredYesByReturnUnlessToldOtherwise) {
    Appearance::apply(Appearance::Scheme::Light);
    Dialogs dialogs;
    using Buttons = QMessageBox::StandardButtons;
    const struct {
        Buttons buttons;
        QMessageBox::StandardButton preset;
        const char* pressed;
    } cases[] = {{QMessageBox::Ok, QMessageBox::NoButton, "OK"},
                 {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::NoButton, "OK"},
                 {QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton, "Yes"},
                 {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::NoButton, "Yes"},
                 {QMessageBox::Yes | QMessageBox::No, QMessageBox::No, "No"}};
    for (const auto& c : cases)
        EXPECT_EQ(pressedByReturn([&] {
                      dialogs.show(
                          {.text = "?", .title = "?", .buttons = c.buttons, .defaultButton = c.preset});
                  }),
                  c.pressed);
    EXPECT_EQ(pressedByReturn([&] { dialogs.input("New job", "Job ID:"); }), "OK");
    const auto printer = newPrinter();
    printer->choose({.file = "print.pdf"});
    EXPECT_EQ(pressedByReturn([&] { dialogs.printer(*printer); }), "Print");
    EXPECT_EQ(pressedByReturn([&] { dialogs.openFile("Texts (*.txt)", {}); }), "Open");
    EXPECT_EQ(pressedByReturn([&] { dialogs.saveFile("Texts (*.txt)", {}); }), "Save");
}

// A message must leave its field in sight, wherever that is.
TEST(Messages, StandClearOfTheirField) {
    const QRect display(0, 0, 1366, 768);
    const QRect window(183, 84, 1000, 600);
    const QSize message(360, 140);
    const struct {
        const char* where;
        QRect field;
        int top; // of the message
    } cases[] = {{"far from the middle", {200, 100, 150, 24}, 314},
                 {"in the middle", {600, 380, 150, 24}, 451},
                 {"where the title bar would be", {600, 290, 150, 24}, 361},
                 {"low", {600, 420, 150, 24}, 491}};
    for (const auto& c : cases) {
        const QRect place = placeBeside(c.field, message, window, display);
        EXPECT_EQ(place.top(), c.top) << c.where;
        EXPECT_FALSE(place.intersects(c.field)) << c.where;
        EXPECT_TRUE(display.contains(place)) << c.where;
    }
    const QRect low = placeBeside({600, 640, 150, 24}, message, {183, 500, 1000, 260}, display);
    EXPECT_EQ(low.bottom(), 632) << "above a field at the foot of the display";
    const QRect pair(300, 200, 150, 80);
    const QRect beside =
        placeBeside(pair, message.grownBy({0, 10, 0, 10}), {0, 0, 911, 485}, {0, 0, 911, 485});
    EXPECT_EQ(beside.left(), 457) << "beside two fields that leave no room below or above";
}
