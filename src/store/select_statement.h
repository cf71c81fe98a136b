// The steps that turn the SELECT parts of a statement into the engine's form.
#pragma once

#include <optional>

#include "store/engine_statement.h"
#include "store/sql_tokens.h"

namespace zelmar {

// TOP n, joined texts, LIKE patterns, bangs and what sorts texts rewritten, in nested statements too.
// Statements without a SELECT go through the same steps.
SqlTokens RewrittenSelect(SqlTokens tokens);

// The copy that `select ... into x from y` asks for; nothing for any other statement.
std::optional<TableCopy> TableCopyOf(const SqlTokens& tokens);

// The one table whose rows a SELECT gives as they are: no join, union, grouping, TOP or DISTINCT. Null for
// any other.
const SqlToken* OneTableOf(const SqlTokens& tokens);

// The same SELECT with the row's identity as its first column.
SqlTokens WithRowId(const SqlTokens& tokens);

}  // namespace zelmar
