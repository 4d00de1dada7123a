#pragma once

#include <vector>

/// A query that must find nothing, and what a row of it means.
struct CatalogueQuery {
    const char* sql;
    const char* meaning;
};

/// References, ranges and orders within and between the tables.
const std::vector<CatalogueQuery>& CatalogueQueries();
