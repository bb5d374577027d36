// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vfApplication {

/// Finds out in threads whether files exist. No caller waits for these threads: a mount may not answer.
class VFAPPLICATIONQT_EXPORT FileExistence : public QObject
{
    Q_OBJECT

public:
    enum State
    {
        Unknown,
        There,
        Missing
    };
    using Look = std::function<bool(const std::string& path)>;

    /// @param look  tells whether a file is there, on any thread; must not touch anything that goes with the program's end
    explicit FileExistence(Look look, QObject* parent = nullptr);

    /// With a look at the file system.
    explicit FileExistence(QObject* parent = nullptr);
    ~FileExistence() override;

    /// @return what is known, at once
    State state(const std::string& path) const;

    /// Has a thread look, unless one is still at that file.
    void check(const std::string& path);

Q_SIGNALS:
    /// On the thread of this object.
    void found();

protected:
    void customEvent(QEvent* event) override;

private:
    /// Outlives this object while threads are at work.
    struct Shared
    {
        std::mutex mutex;
        FileExistence* owner = nullptr;
        Look look;
        std::map<std::string, State> states;
        std::map<std::string, bool> busy;
    };
    static void look(const std::shared_ptr<Shared>& shared, const std::string& path);

    std::shared_ptr<Shared> m_shared;
};

} // namespace vfApplication
