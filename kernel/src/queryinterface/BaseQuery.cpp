#include "queryinterface/BaseQuery.h"

namespace queryinterface {
BaseQuery::~BaseQuery() = default;
}
