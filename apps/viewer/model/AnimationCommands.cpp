// SPDX-License-Identifier: MIT
// The commands of what moves by itself.
#include "model/ModelDocument.h"
#include "model/NamedCommands.h"

#include <velaforge/base/StringList.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vfViewer {

namespace {

using vfBase::VfVariant;

/// A command that needs something that moves.
struct AnimationCommand : DirectCommand
{
    AnimationCommand()
    {
        ModelDocument* document = activeModel();
        getProperties()["enabled"] = VfVariant(document && !document->getAnimation().isEmpty());
    }

    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        if (document.getAnimation().isEmpty())
            return failed(document, "nothing of this model moves");
        return carryOut(document, argument.toString().str());
    }

    virtual bool carryOut(ModelDocument& document, const std::string& argument) = 0;
};

struct PlayAnimation : AnimationCommand
{
    PlayAnimation()
    {
        ModelDocument* document = activeModel();
        showChecked(*this, document && document->getAnimation().isPlaying());
    }
    bool carryOut(ModelDocument& document, const std::string& argument) override
    {
        if (!argument.empty() && argument != "on" && argument != "off")
            return failed(document, "an animation can be \"on\" or \"off\"");
        const bool isWanted = argument.empty() ? !document.getAnimation().isPlaying() : argument == "on";
        return document.play(isWanted) ||
               failed(document, "there is no clock without a window; vfViewer::AnimationTime=<seconds> shows "
                                "how the model stands at a time");
    }
};

struct AnimationTime : AnimationCommand
{
    AnimationTime()
    {
        getProperties()["prompt"] = VfVariant("Time in seconds:");
        if (ModelDocument* document = activeModel())
            getProperties()["promptValue"] = VfVariant(std::to_string(document->getAnimation().getTime()));
    }
    bool carryOut(ModelDocument& document, const std::string& argument) override
    {
        const std::vector<double> time = readNumbers(argument);
        if (time.size() != 1 || time[0] < 0)
            return failed(document, "a time from 0 is needed: vfViewer::AnimationTime=<seconds>");
        document.setAnimationTime(time[0]);
        return true;
    }
};

struct ChooseAnimation : AnimationCommand
{
    ChooseAnimation()
    {
        vfBase::StringList names;
        if (ModelDocument* document = activeModel()) {
            for (const std::string& name : document->getAnimation().getNames())
                names.append(name.c_str());
        }
        getProperties()["enabled"] = VfVariant(names.size() > 1);
        getProperties()["prompt"] = VfVariant("Animation:");
        getProperties()["promptKind"] = VfVariant("choice");
        getProperties()["promptChoices"] = VfVariant(names);
    }

    bool carryOut(ModelDocument& document, const std::string& argument) override
    {
        const std::vector<std::string>& names = document.getAnimation().getNames();
        const auto named = std::find(names.begin(), names.end(), argument);
        const std::vector<double> number = readNumbers(argument);
        std::size_t chosen = names.size();
        if (named != names.end())
            chosen = static_cast<std::size_t>(named - names.begin());
        else if (number.size() == 1 && number[0] >= 1 && number[0] <= static_cast<double>(names.size()))
            chosen = static_cast<std::size_t>(number[0]) - 1;
        if (document.getAnimation().setCurrent(chosen)) {
            document.setAnimationTime(0);
            return true;
        }
        std::string there;
        for (const std::string& name : names)
            there += (there.empty() ? "" : ", ") + name;
        return failed(document, there.empty() ? "there is but one animation, without a name"
                                              : "there are the animations " + there);
    }
};

const CommandRecord<PlayAnimation> play("PlayAnimation", "vfViewer::PlayAnimation");
const CommandRecord<AnimationTime> time("AnimationTime", "vfViewer::AnimationTime");
const CommandRecord<ChooseAnimation> choose("Animation", "vfViewer::Animation");

} // namespace

} // namespace vfViewer
