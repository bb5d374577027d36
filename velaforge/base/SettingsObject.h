// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/SettingsObjectPrivate.h>

namespace vfBase {

/// A handle on a settings object; copies share it.
class VFBASE_EXPORT SettingsObject : public Referenced
{
public:
    /// Makes a handle on @p body; null gives an invalid handle.
    explicit SettingsObject(SettingsObjectPrivate* body) : Referenced(body, true), d(body) {}

    /// Makes a handle on the body of @p other; an invalid one if that is no settings object.
    explicit SettingsObject(const Referenced& other);

    /// Shares the body of @p other.
    SettingsObject(const SettingsObject& other) = default;

    /// Shares the body of @p other.
    SettingsObject& operator=(const SettingsObject& other);
    void setImp(const Referenced& other) override;

    /// Returns the body, null if there is none.
    SettingsObjectPrivate* getImp() const { return d; }

private:
    SettingsObjectPrivate* d;
};

} // namespace vfBase
