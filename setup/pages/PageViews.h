#pragma once

#include "setup/pages/PageView.h"

/// The plugins that provide a control.
enum class PagePlugin { Help, Web };

/// Creates a plugin's control, or the plain one if the plugin is missing or cannot run. The control fills its
/// parent. Links that it does not show itself open in the desktop's browser.
PageView* newPageView(PagePlugin plugin, QWidget* parent);
