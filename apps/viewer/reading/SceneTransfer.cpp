// SPDX-License-Identifier: MIT
#include "reading/SceneTransfer.h"

#include "reading/FileGate.h"
#include "reading/LargeArray.h"
#include "reading/SideBySide.h"

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osgAnimation/RigGeometry>
#include <osgDB/Registry>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <istream>
#include <new>
#include <set>
#include <sstream>
#include <streambuf>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace vfViewer {

/// Where an array stands.
struct HandOver::Block
{
    std::uint32_t index; ///< in the order of FindBlocks
    std::uint32_t count;
    std::uint64_t offset;  ///< in the file
    std::uint64_t size;    ///< in bytes
    std::uint64_t address; ///< in the process that read it; 0 for one that is in the file from the start
};

/// The elements of an array that was emptied.
struct HandOver::Kept
{
    Block block;
    std::shared_ptr<const void> elements;
};

namespace {

using Block = HandOver::Block;

/// Arrays smaller than this are left where they are.
constexpr std::size_t smallestBlock = 256;

/// Arrays smaller than this are not worth looking into another process.
constexpr std::size_t smallestKept = std::size_t(64) * 1024;

/// So much is taken from another process at once: it is still in the cache when it is put where it belongs.
constexpr std::size_t takenAtOnce = std::size_t(128) * 1024;

/// Bytes that are worth a thread of their own to copy.
constexpr std::uint64_t worthAThread = std::uint64_t(8) * 1024 * 1024;

/// At the same place in every process that was split off this one.
const std::uint64_t lookedFor = 0x76664c6f6f6b6564;

/// Finds arrays and indices in the order of the scene, each once: the same order in the copy of a scene as in the scene.
class FindBlocks : public osg::NodeVisitor
{
public:
    FindBlocks() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        osg::Geometry::ArrayList arrays;
        geometry.getArrayList(arrays);
        for (const auto& array : arrays)
            add(*array);
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            if (auto* indices = dynamic_cast<osg::DrawElements*>(geometry.getPrimitiveSet(i)))
                add(*indices);
        }
        if (auto* skin = dynamic_cast<osgAnimation::RigGeometry*>(&geometry))
            skins.push_back(skin);
    }

    std::vector<osg::BufferData*> found;
    std::vector<osgAnimation::RigGeometry*> skins;

private:
    void add(osg::BufferData& data)
    {
        if (m_seen.insert(&data).second)
            found.push_back(&data);
    }

    std::set<const osg::BufferData*> m_seen;
};

void resize(osg::BufferData& data, unsigned int count)
{
    if (auto* array = dynamic_cast<osg::Array*>(&data))
        array->resizeArray(count);
    else
        dynamic_cast<osg::DrawElements&>(data).resizeElements(count);
}

unsigned int countOf(const osg::BufferData& data)
{
    if (const auto* array = dynamic_cast<const osg::Array*>(&data))
        return array->getNumElements();
    return dynamic_cast<const osg::DrawElements&>(data).getNumIndices();
}

/// Calls the work with an array as what it is, where it is of a kind of which large models have many.
/// @return what the work returns; false for another kind
template <class Work>
bool withLargeKind(osg::BufferData& data, Work work)
{
    if (auto* points = dynamic_cast<osg::Vec3Array*>(&data))
        return work(*points);
    if (auto* places = dynamic_cast<osg::Vec2Array*>(&data))
        return work(*places);
    if (auto* colors = dynamic_cast<osg::Vec4Array*>(&data))
        return work(*colors);
    if (auto* indices = dynamic_cast<osg::DrawElementsUInt*>(&data))
        return work(*indices);
    return false;
}

/// Takes the elements out of an array and keeps them where they are.
/// @return null when it is of no such kind
std::shared_ptr<const void> takeElements(osg::BufferData& data)
{
    std::shared_ptr<const void> taken;
    withLargeKind(data, [&taken](auto& array) {
        const auto elements = std::make_shared<std::decay_t<decltype(array.asVector())>>();
        elements->swap(array.asVector());
        taken = std::shared_ptr<const void>(elements, elements->data());
        return true;
    });
    return taken;
}

/// Lets go of the memory, too.
void empty(osg::BufferData& data)
{
    resize(data, 0);
    if (auto* array = dynamic_cast<osg::Array*>(&data))
        array->trim();
}

/// What stands at the end of the file.
struct Trailer
{
    std::uint64_t magic = 0x76665363656e6531;
    std::uint64_t blockCount = 0;
    std::uint64_t sceneSize = 0; ///< 0 for none
};

bool writeAt(int file, const void* data, std::size_t size, long long offset)
{
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = pwrite(file, bytes, size, offset);
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
        offset += written;
    }
    return true;
}

/// Works on even and odd numbers side by side where there are enough bytes for it: as a rule there are two large arrays, the
/// points and their normals. @return whether both succeeded
template <class Work>
bool inTwoThreads(const std::vector<Block>& blocks, Work work)
{
    std::uint64_t size = 0;
    for (const Block& block : blocks)
        size += std::min(block.size, worthAThread);
    if (size < worthAThread)
        return work(0) && work(1);
    auto odd = std::async(sideBySide, work, 1);
    const bool isDone = work(0);
    return odd.get() && isDone;
}

class Sink
{
public:
    explicit Sink(int file) : m_file(file) {}

    void put(const void* data, std::size_t size)
    {
        m_isGood = m_isGood && writeAt(m_file, data, size, m_offset);
        m_offset += static_cast<long long>(size);
    }

    void put(const std::string& text)
    {
        const std::uint64_t size = text.size();
        put(&size, sizeof(size));
        put(text.data(), text.size());
    }

    void put(const std::vector<std::string>& texts)
    {
        const std::uint64_t count = texts.size();
        put(&count, sizeof(count));
        for (const std::string& text : texts)
            put(text);
    }

    /// Leaves room for what somebody else writes.
    void skip(std::size_t size) { m_offset += static_cast<long long>(size); }

    /// What follows may be taken for numbers of any kind where it lies.
    void align() { m_offset = (m_offset + 15) / 16 * 16; }

    bool isGood() const { return m_isGood; }
    long long offset() const { return m_offset; }

private:
    int m_file;
    long long m_offset = transferHeaderSize;
    bool m_isGood = true;
};

/// A file in memory as it is mapped; everything that is taken from it is checked against its end.
class Source
{
public:
    Source(int file, long long size) : m_size(size)
    {
        // Whatever the other process says: beyond the end there is no memory.
        struct stat status;
        if (size > 0 && fstat(file, &status) == 0 && status.st_size >= size)
            m_map = mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED, file, 0);
    }
    ~Source()
    {
        if (m_map != MAP_FAILED)
            munmap(m_map, static_cast<std::size_t>(m_size));
    }

    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// @return null where the file does not reach that far
    const char* at(std::uint64_t offset, std::uint64_t size) const
    {
        const auto end = static_cast<std::uint64_t>(m_size);
        if (m_map == MAP_FAILED || offset > end || size > end - offset)
            return nullptr;
        return static_cast<const char*>(m_map) + offset;
    }

    bool take(std::uint64_t& offset, void* data, std::size_t size) const
    {
        const char* bytes = at(offset, size);
        if (!bytes)
            return false;
        if (size > 0)
            std::memcpy(data, bytes, size);
        offset += size;
        return true;
    }

    bool take(std::uint64_t& offset, std::string& text) const
    {
        std::uint64_t size = 0;
        if (!take(offset, &size, sizeof(size)))
            return false;
        const char* bytes = at(offset, size);
        if (!bytes)
            return false;
        text.assign(bytes, size);
        offset += size;
        return true;
    }

    bool take(std::uint64_t& offset, std::vector<std::string>& texts) const
    {
        std::uint64_t count = 0;
        if (!take(offset, &count, sizeof(count)))
            return false;
        for (std::uint64_t i = 0; i < count; ++i) {
            std::string text;
            if (!take(offset, text))
                return false;
            texts.push_back(std::move(text));
        }
        return true;
    }

private:
    long long m_size;
    void* m_map = MAP_FAILED;
};

/// Reads from memory that somebody else owns.
class MemoryBuffer : public std::streambuf
{
public:
    MemoryBuffer(const char* data, std::size_t size)
    {
        char* begin = const_cast<char*>(data);
        setg(begin, begin, begin + size);
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        const off_type size = egptr() - eback();
        if (direction == std::ios_base::cur)
            offset += gptr() - eback();
        else if (direction == std::ios_base::end)
            offset += size;
        if (offset < 0 || offset > size)
            return pos_type(off_type(-1));
        setg(eback(), eback() + offset, egptr());
        return pos_type(offset);
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override
    {
        return seekoff(position, std::ios_base::beg, mode);
    }
};

osgDB::ReaderWriter* sceneFormat()
{
    return osgDB::Registry::instance()->getReaderWriterForExtension("osgb");
}

/// @return the scene without its large arrays, empty when it cannot be written
std::string writeRest(const osg::Node& scene)
{
    std::ostringstream stream;
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
    osgDB::ReaderWriter* format = sceneFormat();
    if (!format || !format->writeNode(scene, stream, options).success())
        return std::string();
    return stream.str();
}

} // namespace

void loadSceneFormat()
{
    writeRest(*osg::ref_ptr<osg::Node>(
        new osg::Group)); // what knows the classes of scenes comes with the first of them
}

HandOver::HandOver(int file) : m_file(file) {}

HandOver::~HandOver() = default;

long long HandOver::put(ReadOutcome& outcome)
{
    m_kept.clear();
    Sink sink(m_file);
    std::vector<Block> blocks;
    std::string rest;
    if (outcome.scene) {
        FindBlocks finder;
        outcome.scene->accept(finder);
        for (std::size_t i = 0; i < finder.found.size(); ++i) {
            osg::BufferData& data = *finder.found[i];
            const std::size_t size = data.getTotalDataSize();
            const void* elements = data.getDataPointer();
            if (size < smallestBlock || !elements)
                continue;
            sink.align();
            Block block = {static_cast<std::uint32_t>(i), countOf(data),
                           static_cast<std::uint64_t>(sink.offset()), size, 0};
            const std::shared_ptr<const void> taken = size < smallestKept ? nullptr : takeElements(data);
            if (taken) {
                block.address = reinterpret_cast<std::uintptr_t>(taken.get());
                m_kept.push_back({block, taken});
                sink.skip(size);
            } else {
                sink.put(elements, size);
                empty(data);
            }
            blocks.push_back(block);
        }
        rest = writeRest(*outcome.scene);
        if (rest.empty())
            outcome.reason = "it cannot be handed on by the process that read it";
    }
    const std::uint64_t start = static_cast<std::uint64_t>(sink.offset());
    sink.put(outcome.reason);
    sink.put(outcome.warnings);
    sink.put(outcome.details);
    sink.put(outcome.files);
    Trailer trailer;
    trailer.blockCount = blocks.size();
    trailer.sceneSize = rest.size();
    sink.put(&trailer, sizeof(trailer));
    sink.put(blocks.data(), blocks.size() * sizeof(Block));
    sink.put(rest.data(), rest.size());
    sink.put(&start, sizeof(start));
    return sink.isGood() ? sink.offset() : 0;
}

bool HandOver::putArrays() const
{
    return std::all_of(m_kept.begin(), m_kept.end(), [this](const Kept& kept) {
        const Block& block = kept.block;
        return writeAt(m_file, kept.elements.get(), block.size, static_cast<long long>(block.offset));
    });
}

namespace {

/// Looks into the memory of another process. @return whether all of it was there
bool look(int process, std::uint64_t address, void* target, std::size_t size)
{
    auto* bytes = static_cast<char*>(target);
    while (size > 0) {
        const iovec here = {bytes, size};
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is none in this process
        const iovec there = {reinterpret_cast<void*>(address), size};
        const ssize_t taken = process_vm_readv(process, &here, 1, &there, 1, 0);
        if (taken <= 0)
            return false;
        bytes += taken;
        address += static_cast<std::uint64_t>(taken);
        size -= static_cast<std::size_t>(taken);
    }
    return true;
}

/// @return how many bytes of addresses a process has in use
std::uint64_t addressesOf(int process)
{
    FILE* file = std::fopen(("/proc/" + std::to_string(process) + "/statm").c_str(), "re");
    unsigned long pages = 0;
    if (file) {
        if (std::fscanf(file, "%lu", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return std::uint64_t(pages) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

/// What was handed on, and how its arrays come out of it.
class Arrival
{
public:
    /// @param process  whose memory has the arrays that are not in the file, 0 when all are there
    Arrival(const Source& source, int process, const std::atomic<bool>& stop)
        : m_source(source), m_process(process), m_stop(stop)
    {}

    /// @return whether the arrays of the blocks have what they are to have
    bool fillAll(const std::vector<Block>& blocks, const std::vector<osg::BufferData*>& arrays) const
    {
        std::set<std::uint32_t> filled;
        std::uint64_t left = m_process != 0 ? addressesOf(m_process) : 0; // nobody has more than that
        for (const Block& block : blocks) {
            if (block.index >= arrays.size() || !filled.insert(block.index).second)
                return false; // nobody sends one twice
            if (!isThere(block) || (isInProcess(block) && block.size > left))
                return false;
            left -= isInProcess(block) ? block.size : 0;
        }
        return inTwoThreads(blocks, [&](std::size_t first) {
            for (std::size_t i = first; i < blocks.size(); i += 2) {
                osg::BufferData& data = *arrays[blocks[i].index];
                if (m_stop || !fill(data, blocks[i]) || data.getTotalDataSize() != blocks[i].size)
                    return false;
                data.dirty();
            }
            return true;
        });
    }

private:
    bool isInProcess(const Block& block) const { return m_process != 0 && block.address != 0; }

    bool isThere(const Block& block) const
    {
        return isInProcess(block) || m_source.at(block.offset, block.size) != nullptr;
    }

    /// Large arrays are written once, and not filled with zeros before; the others are made as large first.
    bool fill(osg::BufferData& data, const Block& block) const
    {
        const bool isLarge = withLargeKind(data, [&](auto& array) { return append(array, block); });
        if (isLarge || isInProcess(block))
            return isLarge;
        resize(data, block.count);
        if (data.getTotalDataSize() != block.size)
            return false;
        std::memcpy(const_cast<void*>(data.getDataPointer()), m_source.at(block.offset, block.size),
                    block.size);
        return true;
    }

    template <class Array>
    bool append(Array& array, const Block& block) const
    {
        using Element = typename Array::value_type;
        if (block.size % sizeof(Element) != 0)
            return false;
        const std::size_t count = block.size / sizeof(Element);
        array.clear();
        reserveLarge(array.asVector(), count);
        if (!isInProcess(block)) {
            const auto* elements = reinterpret_cast<const Element*>(m_source.at(block.offset, block.size));
            array.insert(array.end(), elements, elements + count);
            return true;
        }
        std::vector<Element> some(std::min(takenAtOnce / sizeof(Element), count));
        for (std::size_t done = 0; done < count && !m_stop; done += some.size()) {
            some.resize(std::min(some.size(), count - done));
            if (!look(m_process, block.address + done * sizeof(Element), some.data(),
                      some.size() * sizeof(Element)))
                return false;
            array.insert(array.end(), some.begin(), some.end());
        }
        return !m_stop;
    }

    const Source& m_source;
    int m_process;
    const std::atomic<bool>& m_stop;
};

osg::ref_ptr<osg::Node> receiveScene(const Source& source, std::uint64_t offset, const Trailer& trailer,
                                     const Arrival& arrival)
{
    std::vector<Block> blocks(trailer.blockCount);
    if (!source.take(offset, blocks.data(), blocks.size() * sizeof(Block)))
        return nullptr;
    const char* rest = source.at(offset, trailer.sceneSize);
    osgDB::ReaderWriter* format = sceneFormat();
    if (!rest || !format)
        return nullptr;
    MemoryBuffer buffer(rest, trailer.sceneSize);
    std::istream stream(&buffer);
    const FileGate::Shut shut; // everything the scene needs has come with it
    osg::ref_ptr<osg::Node> scene = format->readNode(stream, nullptr).getNode();
    if (!scene)
        return nullptr;
    FindBlocks finder;
    scene->accept(finder);
    for (osgAnimation::RigGeometry* skin : finder.skins)
        skin->setComputeBoundingBoxCallback(nullptr); // which nobody hands on
    return arrival.fillAll(blocks, finder.found) ? scene : nullptr;
}

} // namespace

bool canLookInto(int process)
{
    std::uint64_t seen = 0;
    return look(process, reinterpret_cast<std::uintptr_t>(&lookedFor), &seen, sizeof(seen)) &&
           seen == lookedFor;
}

ReadOutcome receiveOutcome(int file, long long size, int process, const std::atomic<bool>& stop)
{
    ReadOutcome outcome;
    const Source source(file, size);
    std::uint64_t offset = static_cast<std::uint64_t>(size) - sizeof(std::uint64_t);
    std::uint64_t start = 0;
    Trailer trailer;
    if (!source.take(offset, &start, sizeof(start)) || !source.take(start, outcome.reason) ||
        !source.take(start, outcome.warnings) || !source.take(start, outcome.details) ||
        !source.take(start, outcome.files) || !source.take(start, &trailer, sizeof(trailer)) ||
        trailer.magic != Trailer().magic || !source.at(start, trailer.blockCount * sizeof(Block)))
    {
        outcome.reason = notHandedOn;
        return outcome;
    }
    if (trailer.sceneSize == 0)
        return outcome;
    try {
        outcome.scene = receiveScene(source, start, trailer, Arrival(source, process, stop));
        if (!outcome.scene)
            outcome.reason = notHandedOn;
    } catch (const std::bad_alloc&) {
        outcome.reason = "not enough memory";
    }
    return outcome;
}

} // namespace vfViewer
