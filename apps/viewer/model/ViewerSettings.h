// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/scene/Measurement.h>
#include <velaforge/scene/StandardView.h>
#include <velaforge/scene/ViewStyle.h>

#include <osg/Vec3f>

namespace vfViewer {

/// How the mouse moves the camera.
struct MouseSettings
{
    /// The range of orbitPercent.
    static constexpr int slowest = 10;
    static constexpr int fastest = 500;

    bool isTrackball = false; ///< orbits without an up axis
    int orbitPercent = 100;   ///< speed of orbiting
};

/// What the user chose of the viewer, kept between runs.
class ViewerSettings : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfViewer, ViewerSettings)

        ViewerSettings() = default;
    ViewerSettings(const ViewerSettings& other, const osg::CopyOp& copyop);

    /// @return the one object, known to the store
    static ViewerSettings& instance();

    /// From where models are looked at first, 0 to 9 as StandardView counts; the upper right corner unless set.
    int getFirstView() const { return m_firstView; }

    /// Nothing for a number that is no view.
    void setFirstView(int view);

    /// The colours of pictures behind the model, red, green and blue from 0 to 1, at the top and at the bottom.
    const osg::Vec3f& getBackgroundTop() const { return m_background.top; }
    const osg::Vec3f& getBackgroundBottom() const { return m_background.bottom; }
    const vfScene::Background& getBackground() const { return m_background; }
    void setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

    /// How a new view shows its model. Its background and its sections are not kept.
    const vfScene::ViewStyle& getFirstStyle() const { return m_firstStyle; }
    void setFirstStyle(const vfScene::ViewStyle& style);

    /// What the numbers of models mean, and how lengths are shown; None and None unless set.
    vfScene::Units getUnits() const { return m_units; }
    void setUnits(const vfScene::Units& units) { m_units = units; }

    /// How much the history of a document may hold, in megabytes; 512 unless set.
    int getHistoryMegabytes() const { return m_historyMegabytes; }

    /// Nothing for less than 1.
    void setHistoryMegabytes(int megabytes);

    /// Returns how the mouse moves the camera.
    const MouseSettings& getMouse() const { return m_mouse; }

    /// Sets how the mouse moves the camera. A speed out of range becomes the nearest in range.
    void setMouse(const MouseSettings& mouse);

protected:
    ~ViewerSettings() override = default;

private:
    int m_firstView = static_cast<int>(vfScene::StandardView::FrontRight);
    vfScene::ViewStyle m_firstStyle;
    vfScene::Units m_units;
    int m_historyMegabytes = 512;
    MouseSettings m_mouse;
    vfScene::Background m_background;
};

} // namespace vfViewer
