// SPDX-License-Identifier: MIT
#pragma once

#include "qt/FactTable.h"

namespace vfViewer {

/// What the active model, or the part of it that is selected, consists of.
class StatisticsPanel : public FactTable
{
    Q_OBJECT

public:
    explicit StatisticsPanel(QWidget& parent) : FactTable(parent, "statistics") {}

protected:
    void fill() override;
};

/// What can be said about the part that is selected, or the whole model.
class PropertiesPanel : public FactTable
{
    Q_OBJECT

public:
    explicit PropertiesPanel(QWidget& parent) : FactTable(parent, "properties") {}

protected:
    void fill() override;
};

} // namespace vfViewer
