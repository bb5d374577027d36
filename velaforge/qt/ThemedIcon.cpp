// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ThemedIcon.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace vfApplication {

namespace {

/// What the eye needs to tell a symbol from its background.
constexpr double leastContrast = 3;
constexpr int lightnessStep = 4;

double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

/// Draws an SVG picture in colours that suit the palette at that moment.
class ThemedIconEngine : public QIconEngine
{
public:
    ThemedIconEngine(QString path, QByteArray picture)
        : m_path(std::move(path)), m_picture(std::move(picture))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    /// Returns a picture of @p size pixels.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal ratio) override
    {
        const QPalette palette = QGuiApplication::palette();
        const QColor background =
            palette.color(mode == QIcon::Selected ? QPalette::Highlight : QPalette::Window);
        const QString key = QStringLiteral("velaforge-icon:%1:%2x%3:%4:%5")
                                .arg(m_path)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(background.rgb())
                                .arg(int(mode));
        QPixmap drawn;
        if (!QPixmapCache::find(key, &drawn)) {
            drawn = draw(size, background);
            if (mode == QIcon::Disabled) {
                QStyleOption option;
                option.palette = palette;
                drawn = QApplication::style()->generatedIconPixmap(mode, drawn, &option);
            }
            QPixmapCache::insert(key, drawn);
        }
        drawn.setDevicePixelRatio(ratio);
        return drawn;
    }

    QString key() const override { return QStringLiteral("velaforge-icon"); }
    QIconEngine* clone() const override { return new ThemedIconEngine(*this); }
    bool isNull() override { return m_picture.isEmpty(); }

private:
    QPixmap draw(const QSize& size, const QColor& background) const
    {
        QByteArray picture = recolored(m_picture, background);
        QBuffer buffer(&picture);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
        QImage whole(size, QImage::Format_ARGB32_Premultiplied);
        whole.fill(Qt::transparent);
        const QImage image = reader.read();
        if (!image.isNull()) {
            QPainter painter(&whole);
            painter.drawImage((size.width() - image.width()) / 2, (size.height() - image.height()) / 2,
                              image);
        }
        return QPixmap::fromImage(whole);
    }

    QString m_path;
    QByteArray m_picture;
};

} // namespace

QColor readableOn(const QColor& background, const QColor& color)
{
    const bool isDark = luminance(background) < 0.18;
    int hue = 0;
    int saturation = 0;
    int lightness = 0;
    color.getHsl(&hue, &saturation, &lightness);
    QColor readable = color;
    while (contrast(background, readable) < leastContrast && (isDark ? lightness < 255 : lightness > 0)) {
        lightness = std::clamp(lightness + (isDark ? lightnessStep : -lightnessStep), 0, 255);
        readable.setHsl(hue, saturation, lightness);
    }
    return readable;
}

QByteArray recolored(const QByteArray& picture, const QColor& background)
{
    constexpr qsizetype length = 7; // of "#rrggbb"
    QByteArray result = picture;
    for (qsizetype at = result.indexOf("\"#"); at >= 0; at = result.indexOf("\"#", at + 1)) {
        const QColor color(QString::fromLatin1(result.mid(at + 1, length)));
        if (color.isValid() && result.mid(at + 1 + length, 1) == "\"")
            result.replace(at + 1, length, readableOn(background, color).name().toLatin1());
    }
    return result;
}

QIcon themedIcon(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new ThemedIconEngine(path, file.readAll()));
}

} // namespace vfApplication
