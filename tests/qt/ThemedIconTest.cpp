// SPDX-License-Identifier: MIT
// Icons are seen on dark and on light palettes.
#include "Program.h"

#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/ThemedIcon.h>

#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QPalette>

#include <algorithm>
#include <cmath>

using vfTest::Program;

namespace {

const QColor darkWindow(0x20, 0x22, 0x26);
const QColor lightWindow(0xf0, 0xf0, 0xf0);

double contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

/// Returns the best contrast of what is drawn opaquely.
double seenOn(const QIcon& icon, const QColor& background, QIcon::Mode mode = QIcon::Normal)
{
    const QImage image = icon.pixmap(64, mode).toImage();
    double best = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() == 255)
                best = std::max(best, contrast(color, background));
        }
    }
    return best;
}

void setWindowColor(const QColor& color)
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, color);
    QApplication::setPalette(palette);
}

} // namespace

TEST(ThemedIcon, IsSeenOnDarkAndOnLightAsThePaletteChanges)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            for (const char* name : {"document-open", "edit-undo", "application-exit"}) {
                const QIcon icon = vfApplication::findIcon(QLatin1String(name));
                for (const QColor& window :
                     {lightWindow, darkWindow, QColor(Qt::black), QColor(Qt::white), lightWindow}) {
                    setWindowColor(window);
                    EXPECT_LE(2.9, seenOn(icon, window)) << name << " on " << window.name().toStdString();
                }
            }
        });
    });
}

TEST(ThemedIcon, HasAllThePixelsThatWereAskedFor)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            const QIcon icon = vfApplication::findIcon(QStringLiteral("document-open"));
            EXPECT_EQ(QSize(48, 48), icon.pixmap(QSize(48, 48)).size());
            const QPixmap sharp = icon.pixmap(QSize(24, 24), 2.0);
            EXPECT_EQ(QSize(48, 48), sharp.size());
            EXPECT_EQ(2.0, sharp.devicePixelRatio());
        });
    });
}

TEST(ThemedIcon, LooksDisabledWhenItIs)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            const QIcon icon = vfApplication::findIcon(QStringLiteral("document-open"));
            EXPECT_NE(icon.pixmap(32).toImage(), icon.pixmap(32, QIcon::Disabled).toImage());
        });
    });
}

TEST(ThemedIcon, ThereIsNoneForAnUnknownName)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            EXPECT_TRUE(vfApplication::findIcon(QString()).isNull());
            EXPECT_TRUE(vfApplication::themedIcon(QStringLiteral(":/icons/no-such.svg")).isNull());
        });
    });
}

TEST(ThemedIcon, ColorsThatAreReadableStayAsTheyAre)
{
    EXPECT_EQ(QColor(0x5b, 0x6b, 0x7d), vfApplication::readableOn(lightWindow, QColor(0x5b, 0x6b, 0x7d)));
    for (const QColor& background : {darkWindow, lightWindow, QColor(Qt::black), QColor(Qt::white)}) {
        for (const QColor& color :
             {QColor(Qt::black), QColor(Qt::white), QColor(0x2f, 0x7f, 0xc1), QColor(Qt::yellow)})
            EXPECT_LE(3, contrast(background, vfApplication::readableOn(background, color)));
    }
}

TEST(ThemedIcon, OnlyColorsAreReplacedInThePicture)
{
    EXPECT_EQ("<g fill=\"none\" href=\"#mark\" stroke=\"#000\"/>",
              vfApplication::recolored("<g fill=\"none\" href=\"#mark\" stroke=\"#000\"/>", lightWindow));
    EXPECT_NE("<g stroke=\"#000000\"/>", vfApplication::recolored("<g stroke=\"#000000\"/>", darkWindow));
    EXPECT_EQ("<g stroke=\"#", vfApplication::recolored("<g stroke=\"#", darkWindow));
}
