// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatArrays.h>
#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/TransferBytes.h>
#include <velaforge/formats/internal/TransferParts.h>

#include <unistd.h>

namespace vfFormats {

namespace {

/// Smaller ones are not worth copying from another process.
constexpr std::size_t smallestKept = std::size_t(64) * 1024;

template <class Record>
void putRecords(TransferSink& sink, const std::vector<Record>& records)
{
    const std::uint64_t count = records.size();
    sink.put(&count, sizeof(count));
    sink.put(records.data(), records.size() * sizeof(Record));
}

bool canSend(const osg::Image& image)
{
    ImagePart part;
    return describe(image, part);
}

ArrayPart describe(const osg::BufferData& data)
{
    ArrayPart part;
    part.kind = static_cast<std::uint32_t>(flatKindOf(data));
    part.variance = data.getDataVariance();
    if (const auto* array = data.asArray()) {
        part.binding = array->getBinding();
        part.isNormalized = array->getNormalize();
        part.isPreserved = array->getPreserveDataType();
    } else if (const auto* primitives = data.asPrimitiveSet()) {
        part.mode = primitives->getMode();
    }
    if (const auto* range = dynamic_cast<const osg::DrawArrays*>(&data)) {
        part.first = range->getFirst();
        part.count = range->getCount();
    } else if (const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&data)) {
        part.first = lengths->getFirst();
        part.size = lengths->size() * sizeof(lengths->front());
    } else {
        part.size = data.getTotalDataSize();
    }
    return part;
}

/// @return where the elements are; null for none
const void* elementsOf(const osg::BufferData& data)
{
    const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&data);
    if (!lengths)
        return data.getDataPointer();
    return lengths->empty() ? nullptr : &lengths->front();
}

void putLists(TransferSink& sink, const FlatScene& flat)
{
    std::vector<ListPart> parts;
    for (const FlatScene::List& list : flat.lists)
        parts.push_back({list.records, static_cast<std::uint32_t>(list.words.size())});
    sink.put(parts.data(), parts.size() * sizeof(ListPart));
    sink.align();
    for (const FlatScene::List& list : flat.lists)
        sink.put(list.words.data(), list.words.size() * sizeof(std::uint32_t));
}

void putNames(TransferSink& sink, const std::vector<std::string>& names)
{
    std::vector<std::uint32_t> lengths;
    for (const std::string& name : names)
        lengths.push_back(static_cast<std::uint32_t>(name.size()));
    putRecords(sink, lengths);
    for (const std::string& name : names)
        sink.put(name.data(), name.size());
}

} // namespace

long long SceneSender::send(ReadOutcome& outcome, LargeArrays place, SceneSharing sharing)
{
    m_kept.clear();
    if (ftruncate(m_file, 0) != 0)
        return 0;
    TransferSink sink(m_file);
    FlatScene flat;
    if (outcome.scene)
        flat = flatten(*outcome.scene, canSend, sharing);
    outcome.warnings.insert(outcome.warnings.end(), flat.warnings.begin(), flat.warnings.end());
    const auto put = [&](PlacePart& part, const void* data, const osg::Referenced& owner) {
        if (part.size == 0)
            return;
        if (place == LargeArrays::InThisProcess && part.size >= smallestKept) {
            part.address = reinterpret_cast<std::uintptr_t>(data);
            m_kept.emplace_back(&owner);
            return;
        }
        sink.align();
        part.offset = static_cast<std::uint64_t>(sink.offset());
        sink.put(data, part.size);
    };
    std::vector<ArrayPart> arrays;
    arrays.reserve(flat.arrays.size());
    for (const FlatScene::Array& array : flat.arrays) {
        arrays.push_back(describe(*array.data));
        arrays.back().name = array.name;
        put(arrays.back(), elementsOf(*array.data), *array.data);
    }
    std::vector<ImagePart> images(flat.images.size());
    for (std::size_t i = 0; i < images.size(); ++i) {
        const osg::Image& image = *flat.images[i].image;
        describe(image, images[i]);
        images[i].name = flat.images[i].name;
        images[i].fileName = flat.images[i].fileName;
        put(images[i], image.data(), image);
    }
    Trailer trailer;
    trailer.textsAt = static_cast<std::uint64_t>(sink.offset());
    sink.put(outcome.reason);
    sink.put(outcome.warnings);
    sink.put(outcome.details);
    sink.put(outcome.files);
    sink.put(outcome.missed);
    trailer.sceneAt = static_cast<std::uint64_t>(sink.offset());
    trailer.hasScene = outcome.scene.valid();
    putNames(sink, flat.texts);
    putRecords(sink, arrays);
    putRecords(sink, images);
    putLists(sink, flat);
    sink.put(&trailer, sizeof(trailer));
    return sink.finish() ? sink.offset() : 0;
}

} // namespace vfFormats
