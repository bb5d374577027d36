// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/Quiet.h>

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vfFormats {

namespace {

int makeFile()
{
    return memfd_create("readers", MFD_CLOEXEC);
}

int prepared = -1;

void flushStreams()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

} // namespace

Quiet::Quiet()
    : m_before(vfBase::NotifyHandler::instance().isQuiet()),
      m_caught(prepared >= 0 ? std::exchange(prepared, -1) : makeFile())
{
    vfBase::clearMonitor();
    vfBase::NotifyHandler::instance().setQuiet(true);
    for (int i = 0; m_caught >= 0 && i < 2; ++i) {
        flushStreams();
        m_saved[i] = fcntl(i + 1, F_DUPFD_CLOEXEC, 3);
        if (m_saved[i] >= 0)
            dup2(m_caught, i + 1);
    }
}

void Quiet::prepare()
{
    if (prepared < 0)
        prepared = makeFile();
}

Quiet::~Quiet()
{
    stop();
    if (m_caught >= 0)
        close(m_caught);
}

std::vector<std::string> Quiet::stop()
{
    std::vector<std::string> texts;
    if (m_isOver)
        return texts;
    m_isOver = true;
    vfBase::NotifyHandler::instance().setQuiet(m_before);
    flushStreams();
    for (int i = 0; i < 2; ++i) {
        if (m_saved[i] >= 0) {
            dup2(m_saved[i], i + 1);
            close(m_saved[i]);
        }
    }
    const vfBase::StringList kept = vfBase::getMonitorMessages();
    for (unsigned int i = 0; i < kept.size(); ++i)
        texts.push_back(vfBase::printable(kept.get(i)));
    addCaught(texts);
    return texts;
}

void Quiet::addCaught(std::vector<std::string>& texts) const
{
    char buffer[16384];
    const ssize_t length = m_caught >= 0 ? pread(m_caught, buffer, sizeof(buffer), 0) : 0;
    std::istringstream lines(std::string(buffer, static_cast<std::size_t>(std::max<ssize_t>(length, 0))));
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty())
            texts.push_back(vfBase::printable(line));
    }
}

} // namespace vfFormats
