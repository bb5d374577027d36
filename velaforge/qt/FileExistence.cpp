// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/FileExistence.h>

#include <QCoreApplication>
#include <QEvent>

#include <exception>
#include <system_error>
#include <thread>

#include <sys/stat.h>

namespace vfApplication {

namespace {

bool isThere(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

} // namespace

FileExistence::FileExistence(Look look, QObject* parent)
    : QObject(parent), m_shared(std::make_shared<Shared>())
{
    m_shared->owner = this;
    m_shared->look = std::move(look);
}

FileExistence::FileExistence(QObject* parent) : FileExistence(isThere, parent) {}

FileExistence::~FileExistence()
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->owner = nullptr;
}

FileExistence::State FileExistence::state(const std::string& path) const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    const auto known = m_shared->states.find(path);
    return known == m_shared->states.end() ? Unknown : known->second;
}

void FileExistence::look(const std::shared_ptr<Shared>& shared, const std::string& path)
{
    bool isFound = false;
    try {
        isFound = shared->look(path);
    } catch (const std::exception&) {
        // What cannot be looked at counts as missing.
    }
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->busy[path] = false;
    shared->states[path] = isFound ? There : Missing;
    if (shared->owner)
        QCoreApplication::postEvent(shared->owner, new QEvent(QEvent::User));
}

void FileExistence::customEvent(QEvent*)
{
    Q_EMIT found();
}

void FileExistence::check(const std::string& path)
{
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        bool& isBusy = m_shared->busy[path];
        if (isBusy)
            return;
        isBusy = true;
    }
    try {
        std::thread(look, m_shared, path).detach();
    } catch (const std::system_error&) {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        m_shared->busy[path] = false; // the next menu tries again
    }
}

} // namespace vfApplication
