#include "syshealth/app/entry_points.h"

#include "syshealth/app/system_health.h"

void Init() { SystemHealth::Init(); }

std::int32_t ParamRegister(std::int32_t command) {
  return SystemHealth::ParamRegister(command);
}

BrivelResult AppMain(std::int32_t command) {
  SystemHealth application;
  return application.AppMain(command);
}
