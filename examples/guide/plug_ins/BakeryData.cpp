#include "BakeryData.h"

BakeryData::~BakeryData() = default;
