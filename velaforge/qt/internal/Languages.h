// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTranslator;

namespace vfApplication {

/// The translations of the program, of this library and of Qt.
class Languages
{
public:
    Languages();
    ~Languages();

    /// Has "<name>_<language>.qm" in that directory belong to the program.
    static void addTranslations(const QString& directory, const QString& name);

    /// @return the languages that there are translations for, and English
    static QStringList available();

    const QString& current() const { return m_current; }

    /// Shows every text in that language, or, for an empty one, in that of the system; English where there is none.
    void set(const QString& language);

private:
    QString m_current;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

/// @return a language's name in that language
QString languageName(const QString& language);

} // namespace vfApplication
