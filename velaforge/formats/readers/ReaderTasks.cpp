// SPDX-License-Identifier: MIT
#include <velaforge/formats/ReaderTasks.h>

#include <velaforge/formats/internal/ReadRequest.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/WriteRequest.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/FilePosition.h>
#include <velaforge/formats/readers/FormatReader.h>
#include <velaforge/formats/readers/ModelReader.h>
#include <velaforge/formats/readers/Quiet.h>
#include <velaforge/formats/readers/ReadProgress.h>
#include <velaforge/formats/writers/FormatWriter.h>
#include <velaforge/isolation/Helper.h>
#include <velaforge/isolation/SharedBytes.h>
#include <velaforge/scene/GraphicsContexts.h>

#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

namespace {

using vfIsolation::TaskContext;

/// What was read, which must stay for as long as the process: the program copies large arrays from its memory.
struct Kept
{
    explicit Kept(int file) : sender(file) {}

    ReadOutcome outcome;
    SceneSender sender;
};

/// @param read  called with the request
template <class Read>
std::string send(TaskContext& context, Read read)
{
    const ReadRequest request = ReadRequest::of(context.argument());
    ReadProgress::share(&context);
    auto& kept = *new Kept(context.result());
    {
        const FilePosition position(request.path);
        kept.outcome = read(request);
    }
    ReadProgress::tell(ReadProgress::Sending);
    const auto place =
        context.lendMemory() ? SceneSender::LargeArrays::InThisProcess : SceneSender::LargeArrays::InFile;
    if (kept.sender.send(kept.outcome, place, SceneSharing::None) > 0)
        return std::string();
    return "it needs more memory than there is";
}

std::string write(TaskContext& context)
{
    ReadProgress::share(&context);
    const WriteRequest request = WriteRequest::of(context.argument());
    const std::vector<int>& files = context.files();
    const vfIsolation::SharedBytes sent(files.at(WriteRequest::SceneFile), request.sceneSize);
    const ReadOutcome outcome = receiveScene(sent.data(), sent.size());
    if (!outcome.scene)
        return outcome.reason;
    ReadProgress::tell(ReadProgress::Writing);
    std::vector<SideFile> sideFiles;
    const std::string reason =
        writeFormat(*outcome.scene, request.directory,
                    {files.at(WriteRequest::ModelFile), files.at(WriteRequest::MaterialsFile),
                     request.materials, request.model},
                    sideFiles);
    if (!reason.empty())
        return reason;
    const std::string packed = packSideFiles(sideFiles);
    return context.append(packed.data(), packed.size()) ? "" : "there is not enough memory for its images";
}

void prepareWriting(std::string_view argument)
{
    loadWriters(WriteRequest::of(argument).model);
    Quiet::prepare();
}

void prepareReading(std::string_view argument)
{
    const ReadRequest request = ReadRequest::of(argument);
    loadReaders(request.path, request.sideFiles);
    Quiet::prepare();
}

} // namespace

void addReaderTasks(vfIsolation::Helper& helper)
{
    helper.onStart([] {
        FileGate::install();
        vfScene::expectFewGraphicsContexts();
    });
    helper.add(
        modelTask,
        [](TaskContext& context) {
            return send(context, [](const ReadRequest& request) {
                return parseModel(request.path, request.sideFiles);
            });
        },
        prepareReading);
    helper.add(
        imageTask,
        [](TaskContext& context) {
            return send(context, [](const ReadRequest& request) { return readImageOnQuad(request.path); });
        },
        prepareReading);
    helper.add(writeTask, write, prepareWriting);
}

} // namespace vfFormats
