// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Languages.h>

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <utility>

namespace vfApplication {

namespace {

using Place = std::pair<QString, QString>; // directory and name

std::vector<Place>& places()
{
    static std::vector<Place> known = {{QStringLiteral(":/translations"), QStringLiteral("vfApplicationQt")}};
    return known;
}

/// @return the language out of those available that is nearest to what the user's system speaks
QString languageOfSystem(const QStringList& available)
{
    for (const QString& wanted : QLocale::system().uiLanguages()) {
        QString language = wanted.left(wanted.indexOf(QLatin1Char('-')));
        if (available.contains(language))
            return language;
    }
    return QStringLiteral("en");
}

} // namespace

Languages::Languages() : m_current(QStringLiteral("en")) {}

Languages::~Languages()
{
    for (const auto& translator : m_translators)
        QCoreApplication::removeTranslator(translator.get());
}

void Languages::addTranslations(const QString& directory, const QString& name)
{
    places().emplace_back(directory, name);
}

QStringList Languages::available()
{
    QStringList languages = {QStringLiteral("en")};
    for (const Place& place : places()) {
        const QString pattern = place.second + QLatin1String("_*.qm");
        for (const QString& file : QDir(place.first).entryList({pattern}, QDir::Files)) {
            const qsizetype start = place.second.size() + 1;
            languages << file.mid(start, file.size() - start - 3);
        }
    }
    languages.removeDuplicates();
    languages.sort();
    return languages;
}

void Languages::set(const QString& language)
{
    const QStringList known = available();
    const QString wanted = language.isEmpty() ? languageOfSystem(known) : language;
    m_current = known.contains(wanted) ? wanted : QStringLiteral("en");
    for (const auto& translator : m_translators)
        QCoreApplication::removeTranslator(translator.get());
    m_translators.clear();
    std::vector<Place> all = {{QLibraryInfo::path(QLibraryInfo::TranslationsPath), QStringLiteral("qtbase")}};
    all.insert(all.end(), places().begin(), places().end());
    for (const auto& [directory, name] : all) {
        auto translator = std::make_unique<QTranslator>();
        if (m_current == QLatin1String("en") ||
            !translator->load(QStringLiteral("%1_%2").arg(name, m_current), directory))
            continue;
        QCoreApplication::installTranslator(translator.get());
        m_translators.push_back(std::move(translator));
    }
}

QString languageName(const QString& language)
{
    const QString name = QLocale(language).nativeLanguageName();
    return name.isEmpty() ? language : name.left(1).toUpper() + name.mid(1);
}

} // namespace vfApplication
