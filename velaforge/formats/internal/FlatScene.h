// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/formats/internal/FlatFields.h>

#include <osg/Array>
#include <osg/Image>
#include <osg/Node>
#include <osg/ref_ptr>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vfFormats {

// A scene as lists of records that refer to one another by number, to be sent from one process to another: first texts,
// arrays and images, then state attributes, states, callbacks and nodes. A record refers only to what stands before it, so
// that nothing can be its own part; the last node is the scene.

// How deep scenes are, and how many nodes a walk visits, at most.
constexpr unsigned int deepestScene = 1000;
constexpr unsigned int mostVisits = 20000000;

/// The lists of records, in their order.
enum class FlatList : std::uint8_t
{
    Attributes,
    States,
    Callbacks,
    Nodes
};

constexpr std::size_t flatLists = 4;

/// A scene that is sent. The arrays and images are those of the scene.
struct FlatScene
{
    struct List
    {
        std::uint32_t records = 0;
        std::vector<std::uint32_t> words;
    };

    struct Array
    {
        osg::ref_ptr<const osg::BufferData> data;
        std::uint32_t name = 0; ///< among the texts
    };

    struct Image
    {
        osg::ref_ptr<const osg::Image> image;
        std::uint32_t name = 0;
        std::uint32_t fileName = 0;
    };

    std::vector<std::string> texts; ///< no longer than longestText
    std::vector<Array> arrays;
    std::vector<Image> images;
    std::array<List, flatLists> lists;
    std::vector<std::string> warnings; ///< what is left out, a line for each kind
};

/// Who else may hold parts of a scene while it is listed.
enum class SceneSharing
{
    OtherThreads,
    None ///< how often an object is referred to may be read: those with one reference are met once, and need no look-up
};

/// Lists what a scene consists of. What is not in the lists of classes (see FlatKinds.h) is left out; groups of other classes
/// become plain groups.
/// @param canSend  called once for each image: false to leave it out
VFFORMATS_EXPORT FlatScene flatten(const osg::Node& scene, bool (*canSend)(const osg::Image& image),
                                   SceneSharing sharing);

/// Lists of records that have arrived.
struct FlatSceneView
{
    struct List
    {
        std::uint32_t records = 0;
        const std::uint32_t* words = nullptr;
        std::uint64_t size = 0; ///< in words
    };

    std::array<List, flatLists> lists;
};

/// Returns whether makeScene() can make a scene of the lists: each number, class and reference is as it should be, the scene is
/// at most deepestScene nodes deep, and a walk through it visits at most mostVisits nodes.
/// @param tables  has the texts, and prototypes of the arrays and images; gets those of the rest
VFFORMATS_EXPORT bool checkScene(const FlatSceneView& scene, FlatTables& tables);

/// Makes a scene of lists for which checkScene() is true. The indices of its primitives are not validated; see validateScene().
/// @param tables  has the texts, arrays and images; gets the rest
/// @return null for one in which a callback is at a node of another class than it is for
VFFORMATS_EXPORT osg::ref_ptr<osg::Node> makeScene(const FlatSceneView& scene, FlatTables& tables);

} // namespace vfFormats
