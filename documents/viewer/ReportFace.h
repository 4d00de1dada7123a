#pragma once

/// Lets assistive technology read the pages of a report view as a document.
void readReportsToScreenReaders();
