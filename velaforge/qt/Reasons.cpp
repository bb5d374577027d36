// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Reasons.h>

#include <velaforge/base/BaseException.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/Text.h>

#include <QCoreApplication>

namespace vfApplication {

namespace {

/// Groups the texts for those who translate them.
struct Reasons
{
    Q_DECLARE_TR_FUNCTIONS(Reasons)
};

} // namespace

QString translatedReason(const std::string& reason)
{
    if (reason == "not enough memory")
        return Reasons::tr("There is not enough memory.");
    if (reason == vfBase::BaseException::unknownReason)
        return Reasons::tr("An unknown error occurred.");
    if (reason == "not a kind of file that can be opened")
        return Reasons::tr("This is not a kind of file that can be opened.");
    if (reason == "there is no file name")
        return Reasons::tr("There is no file name.");
    return toQt(vfBase::VfString(reason));
}

QString currentReason()
{
    return translatedReason(vfBase::BaseException::describeCurrent());
}

void showThrown(const std::function<void()>& work)
{
    try {
        work();
    } catch (...) {
        if (QtApplication* shell = QtApplication::instance())
            shell->showProblem(vfBase::VfString(), fromQt(currentReason()));
    }
}

} // namespace vfApplication
