#pragma once

#include "setup/pages/PageView.h"

/// The plugins that bring a control.
enum class PagePlugin { Help, Web };

/// Makes the control of a plugin, or the plain one where the plugin is missing or cannot run. The control
/// fills its parent. Links that it does not show itself go to the desktop's browser.
PageView* NewPageView(PagePlugin plugin, QWidget* parent);
