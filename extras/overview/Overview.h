#pragma once

/// Registers the overview of a job.
void registerOverview();
