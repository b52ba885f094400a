#pragma once

#include "platform/ado/TableRegistry.h"

#include <span>
#include <vector>

/// The clinic's ten tables: the sale component's seven, and the desk's patients, treatment receipts and shared settings.
/// Whoever reads or makes them takes names and types from here.
namespace clinic {

struct Column
{
    const char *name;
    ado::ColumnType holds;
    bool required = false;
    int longest = 0;  ///< signs of a text; 0: as many as it has
    bool own = false; ///< only the desk makes and shows it; a clinic's own tables may lack it
};

struct Table
{
    const char *name;
    std::vector<Column> columns; ///< the key first

    const Column &key() const { return columns.front(); }
};

std::span<const Table> tables();

/// Tells recordsets of these tables. Every program and component of a clinic does so when it starts; to do it again does
/// no harm.
void registerTables();

} // namespace clinic
