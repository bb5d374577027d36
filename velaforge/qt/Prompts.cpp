// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Prompts.h>

#include <velaforge/base/StringList.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/Text.h>

#include <QColorDialog>
#include <QCoreApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QStringList>

#include <map>
#include <string>

namespace vfApplication {

namespace {

/// @return white for anything but three parts from 0 to 1
QColor readColor(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    double values[3] = {1, 1, 1};
    for (int i = 0; i < 3 && parts.size() >= 3; ++i)
        values[i] = qBound(0.0, parts[i].toDouble(), 1.0);
    return QColor::fromRgbF(float(values[0]), float(values[1]), float(values[2]));
}

bool askForColor(QWidget& window, const QString& question, const QString& proposal, QString& answer)
{
    const QColor color = QColorDialog::getColor(readColor(proposal), &window, question);
    if (!color.isValid())
        return false;
    answer = QStringLiteral("%1,%2,%3")
                 .arg(double(color.redF()), 0, 'g', 4)
                 .arg(double(color.greenF()), 0, 'g', 4)
                 .arg(double(color.blueF()), 0, 'g', 4);
    return true;
}

/// @return "All that can be opened (*.a *.b)" and all files, for a list "a,b"; all files for an empty one
QString fileFilter(const QString& formats)
{
    QStringList patterns;
    for (const QString& format : formats.split(QLatin1Char(','), Qt::SkipEmptyParts))
        patterns << QStringLiteral("*.") + format;
    QString all = QCoreApplication::translate("Prompts", "All files (*)");
    if (patterns.isEmpty())
        return all;
    return QCoreApplication::translate("Prompts", "Suitable files") + QStringLiteral(" (") +
           patterns.join(QLatin1Char(' ')) + QStringLiteral(");;") + all;
}

bool askForFiles(QWidget& window, const QString& question, const QString& formats,
                 vfBase::VfVariant& argument)
{
    const QStringList chosen =
        QFileDialog::getOpenFileNames(&window, question, QString(), fileFilter(formats));
    vfBase::StringList paths;
    for (const QString& path : chosen)
        paths.append(fromQt(path));
    if (!chosen.isEmpty())
        argument = vfBase::VfVariant(paths);
    return !chosen.isEmpty();
}

bool askForChoice(QWidget& window, const QString& title, const QString& question,
                  const vfBase::StringList& choices, QString& answer)
{
    QStringList items;
    for (unsigned int i = 0; i < choices.size(); ++i)
        items << toQt(choices.get(i));
    bool isGiven = false;
    answer = QInputDialog::getItem(&window, title, question, items, 0, false, &isGiven);
    return isGiven;
}

std::map<std::string, QtApplication::Prompt>& ownPrompts()
{
    static std::map<std::string, QtApplication::Prompt> prompts;
    return prompts;
}

} // namespace

void QtApplication::setPrompt(const char* kind, const Prompt& prompt)
{
    ownPrompts()[kind] = prompt;
}

bool askForArgument(QWidget& window, const Command::Properties& properties, vfBase::VfVariant& argument)
{
    const auto text = [&properties](const char* key) {
        return toQt(properties.value(key, vfBase::VfVariant()).toString());
    };
    if (text("prompt").isEmpty())
        return true;
    const QString question = QCoreApplication::translate("Command", text("prompt").toUtf8());
    const auto own = ownPrompts().find(fromQt(text("promptKind")).str());
    if (own != ownPrompts().end()) {
        const QtApplication::Prompt prompt = own->second; // it may be replaced while it asks
        return prompt(window, properties, argument);
    }
    if (text("promptKind") == QLatin1String("files"))
        return askForFiles(window, question, text("promptFilter"), argument);
    QString answer;
    bool isGiven = false;
    if (text("promptKind") == QLatin1String("color"))
        isGiven = askForColor(window, question, text("promptValue"), answer);
    else if (text("promptKind") == QLatin1String("choice"))
        isGiven = askForChoice(window, ActionTable::plainText(text("text")), question,
                               properties.value("promptChoices", vfBase::VfVariant()).toStringList(), answer);
    else
        answer = QInputDialog::getText(&window, ActionTable::plainText(text("text")), question,
                                       QLineEdit::Normal, text("promptValue"), &isGiven);
    if (isGiven)
        argument = vfBase::VfVariant(fromQt(answer));
    return isGiven;
}

} // namespace vfApplication
