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
    /// A handle on @p body; null gives an invalid one.
    explicit SettingsObject(SettingsObjectPrivate* body) : Referenced(body, true), d(body) {}

    /// A handle on the other's body if that is a settings object, otherwise an invalid one.
    explicit SettingsObject(const Referenced& other);

    /// Shares the other's object.
    SettingsObject(const SettingsObject& other) = default;

    /// Shares the other's object instead of the former one.
    SettingsObject& operator=(const SettingsObject& other);

    /// Shares the other's object if it is a settings object; otherwise the handle becomes invalid.
    void setImp(const Referenced& other) override;

    /// @return the object, uncounted; null for an invalid handle
    SettingsObjectPrivate* getImp() const { return d; }

private:
    SettingsObjectPrivate* d;
};

} // namespace vfBase
