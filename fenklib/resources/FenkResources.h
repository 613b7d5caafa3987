#pragma once
#include "platform/basekit/CResourceInstance.h"

// The library's string table as a resource instance: a launcher makes it current with
// basekit::CResourceScope, after which ustring::load(IDS_...) reads the library's texts.
const basekit::CResourceInstance& FenkResources();
