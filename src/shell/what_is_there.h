// Pages that speak only of what this version has.
#pragma once

#include <QString>
#include <functional>

namespace zelmar {

// The page without what does not hold. "<!--if NAME...-->words<!--end-->" keeps its words when one of the
// windows or commands is there, "<!--unless NAME...-->words<!--end-->" when none is. The two stand beside
// each other, never inside.
QString OnlyWhatIsThere(const QString& page);

// Calls `take` with each name that the page makes something depend on.
void ForEachCondition(const QString& page, const std::function<void(const QString& name)>& take);

}  // namespace zelmar
