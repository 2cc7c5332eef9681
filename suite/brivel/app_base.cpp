#include "syshealth/host/app_base.h"

AppBase::AppBase() = default;

AppBase::~AppBase() = default;
