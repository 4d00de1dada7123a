#pragma once

/// Registers the commands and screens of the Extras menu: what engineers need apart from sizing and jobs.
void registerExtras();
