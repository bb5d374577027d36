// SPDX-License-Identifier: MIT
// The commands that tell something about a model.
#include "model/ModelDocument.h"
#include "model/ModelView.h"
#include "model/NamedCommands.h"
#include "model/ViewerDocuments.h"

#include <velaforge/base/Printable.h>
#include <velaforge/scene/Measurement.h>
#include <velaforge/scene/ModelStatistics.h>
#include <velaforge/scene/NodeProperties.h>

#include <iostream>
#include <sstream>

namespace vfViewer {

namespace {

using vfBase::VfVariant;

void print(const std::string& line)
{
    std::cout << vfBase::printable(line) << std::endl;
}

struct PrintProperties : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        osg::Node* target = document.target();
        if (!target)
            return failed(document, "the model is empty");
        for (const vfScene::NodeProperty& property : vfScene::propertiesOf(*target, document.getModelScene()))
            print(std::string(property.name) + ": " + property.value);
        return true;
    }
};

struct PrintHistory : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        print(vfScene::describeHistory(document.getModelScene()));
        return true;
    }
};

/// With points it measures; without, the hand on the mouse is to pick them.
template <vfScene::MeasureKind kind, Tool tool>
struct Measure : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const std::string text = argument.toString().str();
        ModelView* view = currentModelView(document);
        if (text.empty() && view && view->setTool(tool))
            return true;
        const std::vector<double> numbers = readNumbers(text);
        std::vector<osg::Vec3d> points;
        for (std::size_t i = 0; i + 2 < numbers.size(); i += 3)
            points.emplace_back(numbers[i], numbers[i + 1], numbers[i + 2]);
        if (numbers.size() != 3 * vfScene::pointsFor(kind))
            return failed(document, "to measure it, " + std::to_string(vfScene::pointsFor(kind)) +
                                        " points are needed, as <x>,<y>,<z> with commas between them");
        const std::optional<vfScene::Measurement> measured = measure(kind, points);
        if (!measured)
            return failed(document, "there is no such thing between these points");
        document.addMeasurement(*measured);
        return true;
    }
};

struct PrintMeasurements : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        for (const vfScene::Measurement& measurement : document.getMeasurements())
            print(describe(measurement, document.getUnits()));
        return true;
    }
};

struct ClearMeasurements : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        document.clearMeasurements();
        return true;
    }
};

struct SetUnits : DirectCommand
{
    SetUnits()
    {
        getProperties()["prompt"] =
            VfVariant("Unit of the model, and unit that is shown (mm, cm, m, in, ft, none):");
        const ModelDocument* document = activeModel();
        if (document)
            getProperties()["promptValue"] =
                VfVariant(name(document->getUnits().ofModel) + "," + name(document->getUnits().shown));
    }
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const std::string text = argument.toString().str();
        const std::size_t comma = text.find(',');
        const std::optional<vfScene::LengthUnit> ofModel = vfScene::unitOf(text.substr(0, comma));
        const std::optional<vfScene::LengthUnit> shown =
            comma == std::string::npos ? vfScene::LengthUnit::None : vfScene::unitOf(text.substr(comma + 1));
        if (text.empty() || !ofModel || !shown)
            return failed(document, "there are the units mm, cm, m, in, ft and none: vfViewer::Units=<of the "
                                    "model>[,<shown>]");
        document.setUnits({*ofModel, *shown});
        return true;
    }

private:
    static std::string name(vfScene::LengthUnit unit)
    {
        return unit == vfScene::LengthUnit::None ? "none" : vfScene::symbolOf(unit);
    }
};

struct PrintMessages : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        if (const auto* log = dynamic_cast<FailureLog*>(document.getDocumentManager())) {
            for (const Message& message : log->messages())
                print(message.path + ": " + (message.kind == Message::Warning ? "warning: " : "") +
                      message.text);
        }
        return true;
    }
};

const CommandRecord<PrintProperties> printProperties("PrintProperties", "vfViewer::PrintProperties");
const CommandRecord<PrintHistory> printHistory("PrintHistory", "vfViewer::PrintHistory");
const CommandRecord<Measure<vfScene::MeasureKind::Distance, Tool::MeasureDistance>>
    distance("MeasureDistance", "vfViewer::MeasureDistance");
const CommandRecord<Measure<vfScene::MeasureKind::Angle, Tool::MeasureAngle>> angle("MeasureAngle",
                                                                                    "vfViewer::MeasureAngle");
const CommandRecord<Measure<vfScene::MeasureKind::Radius, Tool::MeasureRadius>>
    radius("MeasureRadius", "vfViewer::MeasureRadius");
const CommandRecord<PrintMeasurements> printMeasurements("PrintMeasurements", "vfViewer::PrintMeasurements");
const CommandRecord<ClearMeasurements> clearMeasurements("ClearMeasurements", "vfViewer::ClearMeasurements");
const CommandRecord<SetUnits> setUnits("Units", "vfViewer::Units");
const CommandRecord<PrintMessages> printMessages("PrintMessages", "vfViewer::PrintMessages");

} // namespace

} // namespace vfViewer
