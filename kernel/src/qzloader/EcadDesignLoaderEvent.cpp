#include "qzloader/EcadDesignLoaderEvent.h"

namespace qzloader {

EcadDesignLoaderEvent::EcadDesignLoaderEvent() : qzk::AsyncEvent(true) {}

EcadDesignLoaderEvent::~EcadDesignLoaderEvent() = default;

} // namespace qzloader
