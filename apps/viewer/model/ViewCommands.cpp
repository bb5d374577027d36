// SPDX-License-Identifier: MIT
// The commands of how a model is looked at.
#include "model/ModelDocument.h"
#include "model/ModelView.h"
#include "model/NamedCommands.h"

#include <velaforge/application/Application.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>

#include <algorithm>
#include <iostream>
#include <locale>
#include <sstream>
#include <type_traits>

namespace vfViewer {

namespace {

using vfBase::VfVariant;

/// A command of the view that is looked at.
struct ViewCommand : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        ModelView* view = currentModelView(document);
        return view && carryOut(document, *view, argument.toString().str());
    }

    virtual bool carryOut(ModelDocument& document, ModelView& view, const std::string& argument) = 0;

    /// @return the view that it would work on, null while there is none
    static ModelView* view()
    {
        const vfApplication::Application* application = vfApplication::Application::instance(false);
        return activeModel() ? dynamic_cast<ModelView*>(application->getDocManager().getCurrentView())
                             : nullptr;
    }
};

// --- where from

template <vfScene::StandardView standard>
struct LookFrom : ViewCommand
{
    bool carryOut(ModelDocument&, ModelView& view, const std::string&) override
    {
        view.lookFrom(standard);
        return true;
    }
};

struct Fit : ViewCommand
{
    bool carryOut(ModelDocument&, ModelView& view, const std::string&) override
    {
        view.fit(nullptr);
        return true;
    }
};

struct FitSelection : ViewCommand
{
    FitSelection()
    {
        const ModelDocument* document = activeModel();
        getProperties()["enabled"] = VfVariant(document && document->getSelection());
    }
    bool carryOut(ModelDocument& document, ModelView& view, const std::string&) override
    {
        osg::Node* part = document.getSelection();
        if (!part)
            return failed(document, "no part is selected");
        view.fit(part);
        return true;
    }
};

std::string describe(const vfScene::LookAt& camera)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(9);
    const char* separator = "";
    for (const osg::Vec3d& part : {camera.eye, camera.centre, camera.up}) {
        for (int i = 0; i < 3; ++i, separator = ",")
            text << separator << part[i];
    }
    return text.str();
}

struct PlaceCamera : ViewCommand
{
    PlaceCamera() { getProperties()["scriptOnly"] = VfVariant(true); }
    bool carryOut(ModelDocument& document, ModelView& view, const std::string& argument) override
    {
        const std::vector<double> numbers = readNumbers(argument);
        if (numbers.size() == 9) {
            const vfScene::LookAt camera = {{numbers[0], numbers[1], numbers[2]},
                                            {numbers[3], numbers[4], numbers[5]},
                                            {numbers[6], numbers[7], numbers[8]}};
            if (((camera.eye - camera.centre) ^ camera.up).length2() > 0) {
                view.setCamera(camera);
                return true;
            }
        }
        return failed(document,
                      "to place the camera, its place, what it looks at, and what is up are needed: "
                      "vfViewer::Camera=<x>,<y>,<z>,<x>,<y>,<z>,<x>,<y>,<z>");
    }
};

struct PrintCamera : ViewCommand
{
    PrintCamera() { getProperties()["scriptOnly"] = VfVariant(true); }
    bool carryOut(ModelDocument&, ModelView& view, const std::string&) override
    {
        std::cout << "vfViewer::Camera=" << describe(view.getCamera()) << std::endl;
        return true;
    }
};

// --- the hand on the mouse

template <Tool tool>
struct TakeTool : ViewCommand
{
    TakeTool()
    {
        const ModelView* shown = view();
        showChecked(*this, shown && shown->getTool() == tool);
        getProperties()["group"] = VfVariant("tool");
    }
    bool carryOut(ModelDocument& document, ModelView& view, const std::string&) override
    {
        return view.setTool(tool) || failed(document, "there is no mouse without a window");
    }
};

// --- how

/// A command that changes the style of the view.
struct StyleCommand : ViewCommand
{
    using ViewCommand::carryOut;

    bool carryOut(ModelDocument& document, ModelView& view, const std::string& argument) override
    {
        vfScene::ViewStyle style = view.getStyle();
        if (!change(style, argument))
            return failed(document, whatIsNeeded());
        view.setStyle(style);
        return true;
    }

    virtual bool change(vfScene::ViewStyle& style, const std::string& argument) = 0;
    virtual std::string whatIsNeeded() const = 0;

    /// For menus: shows whether it is in force.
    void setChecked(bool isChecked) { showChecked(*this, isChecked); }
};

/// Something that is on or off: "on" and "off" set it, without an argument it becomes the other.
template <bool vfScene::ViewStyle::*member>
struct Toggle : StyleCommand
{
    Toggle()
    {
        const ModelView* shown = view();
        setChecked((shown ? shown->getStyle() : vfScene::ViewStyle()).*member);
    }
    bool change(vfScene::ViewStyle& style, const std::string& argument) override
    {
        if (!argument.empty() && argument != "on" && argument != "off")
            return false;
        style.*member = argument.empty() ? !(style.*member) : argument == "on";
        return true;
    }
    std::string whatIsNeeded() const override { return "it can be \"on\" or \"off\""; }
};

/// One of several ways: "on" sets it; without an argument it is set, or the first way if it was set already, so that one key
/// goes back and forth.
template <auto member, auto value>
struct Choice : StyleCommand
{
    Choice()
    {
        const ModelView* shown = view();
        setChecked((shown ? shown->getStyle() : vfScene::ViewStyle()).*member == value);
        getProperties()["group"] =
            VfVariant(std::is_same_v<decltype(value), vfScene::DrawMode> ? "draw mode" : "projection");
    }
    bool change(vfScene::ViewStyle& style, const std::string& argument) override
    {
        if (!argument.empty() && argument != "on")
            return false;
        const bool isOn = style.*member == value;
        style.*member = isOn && argument.empty() ? vfScene::ViewStyle().*member : value;
        return true;
    }
    std::string whatIsNeeded() const override
    {
        return "it can be \"on\", or without an argument change back and forth";
    }
};

struct SetBackground : StyleCommand
{
    SetBackground()
    {
        getProperties()["prompt"] = VfVariant("Background");
        getProperties()["promptKind"] = VfVariant("color");
    }
    bool change(vfScene::ViewStyle& style, const std::string& argument) override
    {
        if (argument == "default") {
            style.background.reset();
            return true;
        }
        const std::vector<double> parts = readNumbers(argument);
        const bool isColor =
            (parts.size() == 3 || parts.size() == 6) &&
            std::all_of(parts.begin(), parts.end(), [](double part) { return part >= 0 && part <= 1; });
        if (!isColor)
            return false;
        const osg::Vec3f top(osg::Vec3d(parts[0], parts[1], parts[2]));
        const bool isGradient = parts.size() == 6;
        style.background =
            vfScene::Background{top, isGradient ? osg::Vec3f(osg::Vec3d(parts[3], parts[4], parts[5])) : top};
        return true;
    }
    std::string whatIsNeeded() const override
    {
        return "the background is one colour or two, with parts from 0 to 1: "
               "vfViewer::Background=<red>,<green>,<blue>[,<red>,<green>,<blue>], or \"default\"";
    }
};

template <std::size_t axis>
struct Section : StyleCommand
{
    Section()
    {
        const ModelView* shown = view();
        setChecked(shown && shown->getStyle().sections[axis].isOn);
    }
    bool change(vfScene::ViewStyle& style, const std::string& argument) override
    {
        vfScene::SectionPlane& section = style.sections[axis];
        if (argument.empty()) {
            section.isOn = !section.isOn;
            return true;
        }
        if (argument == "flip") {
            section.isFlipped = !section.isFlipped;
            return true;
        }
        const std::vector<double> position = readNumbers(argument);
        const bool isPosition = position.size() == 1 && position[0] >= 0 && position[0] <= 1;
        if (!isPosition && argument != "on" && argument != "off")
            return false;
        section.isOn = argument != "off";
        if (isPosition)
            section.position = position[0];
        return true;
    }
    std::string whatIsNeeded() const override
    {
        return "a section is \"on\", \"off\", to \"flip\", or at a place from 0 to 1";
    }
};

const CommandRecord<TakeTool<Tool::Select>> toolSelect("ToolSelect", "vfViewer::ToolSelect");
const CommandRecord<TakeTool<Tool::Move>> toolMove("ToolMove", "vfViewer::ToolMove");
const CommandRecord<TakeTool<Tool::Rotate>> toolRotate("ToolRotate", "vfViewer::ToolRotate");
const CommandRecord<TakeTool<Tool::Scale>> toolScale("ToolScale", "vfViewer::ToolScale");

using V = vfScene::ViewStyle;

const CommandRecord<LookFrom<vfScene::StandardView::Front>> front("ViewFront", "vfViewer::ViewFront");
const CommandRecord<LookFrom<vfScene::StandardView::Back>> back("ViewBack", "vfViewer::ViewBack");
const CommandRecord<LookFrom<vfScene::StandardView::Left>> left("ViewLeft", "vfViewer::ViewLeft");
const CommandRecord<LookFrom<vfScene::StandardView::Right>> right("ViewRight", "vfViewer::ViewRight");
const CommandRecord<LookFrom<vfScene::StandardView::Top>> top("ViewTop", "vfViewer::ViewTop");
const CommandRecord<LookFrom<vfScene::StandardView::Bottom>> bottom("ViewBottom", "vfViewer::ViewBottom");
const CommandRecord<LookFrom<vfScene::StandardView::FrontLeft>> frontLeft("ViewFrontLeft",
                                                                          "vfViewer::ViewFrontLeft");
const CommandRecord<LookFrom<vfScene::StandardView::FrontRight>> frontRight("ViewFrontRight",
                                                                            "vfViewer::ViewFrontRight");
const CommandRecord<LookFrom<vfScene::StandardView::BackRight>> backRight("ViewBackRight",
                                                                          "vfViewer::ViewBackRight");
const CommandRecord<LookFrom<vfScene::StandardView::BackLeft>> backLeft("ViewBackLeft",
                                                                        "vfViewer::ViewBackLeft");
const CommandRecord<Fit> fit("Fit", "vfViewer::Fit");
const CommandRecord<FitSelection> fitSelection("FitSelection", "vfViewer::FitSelection");
const CommandRecord<PlaceCamera> placeCameraRecord("Camera", "vfViewer::Camera");
const CommandRecord<PrintCamera> printCamera("PrintCamera", "vfViewer::PrintCamera");

const CommandRecord<Choice<&V::projection, vfScene::Projection::Perspective>>
    perspective("Perspective", "vfViewer::Perspective");
const CommandRecord<Choice<&V::projection, vfScene::Projection::Orthographic>>
    orthographic("Orthographic", "vfViewer::Orthographic");
const CommandRecord<Choice<&V::drawMode, vfScene::DrawMode::Surfaces>> surfaces("Surfaces",
                                                                                "vfViewer::Surfaces");
const CommandRecord<Choice<&V::drawMode, vfScene::DrawMode::Wireframe>> wireframe("Wireframe",
                                                                                  "vfViewer::Wireframe");
const CommandRecord<Choice<&V::drawMode, vfScene::DrawMode::Points>> points("Points", "vfViewer::Points");
const CommandRecord<Toggle<&V::isFlat>> flat("FlatShading", "vfViewer::FlatShading");
const CommandRecord<Toggle<&V::cullsBackFaces>> culling("BackfaceCulling", "vfViewer::BackfaceCulling");
const CommandRecord<Toggle<&V::showsTextures>> textures("Textures", "vfViewer::Textures");
const CommandRecord<Toggle<&V::showsVertexColors>> colors("VertexColors", "vfViewer::VertexColors");
const CommandRecord<Toggle<&V::showsGrid>> grid("Grid", "vfViewer::Grid");
const CommandRecord<Toggle<&V::showsAxes>> axes("Axes", "vfViewer::Axes");
const CommandRecord<Toggle<&V::showsBoxes>> boxes("BoundingBoxes", "vfViewer::BoundingBoxes");
const CommandRecord<Toggle<&V::isAntialiased>> antialiasing("Antialiasing", "vfViewer::Antialiasing");
const CommandRecord<Toggle<&V::lightFollowsCamera>> headlight("Headlight", "vfViewer::Headlight");
const CommandRecord<Toggle<&V::usesFileLamps>> fileLamps("FileLamps", "vfViewer::FileLamps");
const CommandRecord<SetBackground> background("Background", "vfViewer::Background");
const CommandRecord<Section<0>> sectionX("SectionX", "vfViewer::SectionX");
const CommandRecord<Section<1>> sectionY("SectionY", "vfViewer::SectionY");
const CommandRecord<Section<2>> sectionZ("SectionZ", "vfViewer::SectionZ");

} // namespace

} // namespace vfViewer
