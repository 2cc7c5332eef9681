#include "syshealth/host/app_base.h"

AppBase::AppBase() : appId(0), command(0) {}

AppBase::~AppBase() = default;
