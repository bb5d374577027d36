// SPDX-License-Identifier: MIT
#include <velaforge/qt/PlainText.h>

#include <QLabel>
#include <QMessageBox>
#include <QTextDocument>

namespace vfApplication {

QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text)
               ? QLatin1String("<span>") + text.toHtmlEscaped() + QLatin1String("</span>")
               : text;
}

void usePlainText(QLabel& label)
{
    label.setTextFormat(Qt::PlainText);
}

void usePlainText(QMessageBox& box)
{
    box.setTextFormat(Qt::PlainText);
    for (QLabel* label : box.findChildren<QLabel*>())
        usePlainText(*label);
}

} // namespace vfApplication
