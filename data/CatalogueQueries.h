#pragma once

#include <vector>

/// A query that must return nothing, and what a row would mean.
struct CatalogueQuery {
    const char* sql;
    const char* meaning;
};

/// References, ranges and ordering within and between the tables.
const std::vector<CatalogueQuery>& catalogueQueries();
