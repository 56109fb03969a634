# SPDX-License-Identifier: Apache-2.0
# What a deployment of the framework sets: edit this file, or pass -D<NAME>=... The values shipped are placeholders
# under the reserved top-level name "invalid", which no network resolves: the library then lives on its packaged file.

set(ZRCORE_CONFIGURATION_SCHEME "http"
    CACHE STRING "How the configuration hosts are reached: http or https")
set(ZRCORE_CONFIGURATION_PRODUCTION_HOST "configuration.zrcore.example.invalid"
    CACHE STRING "Configuration host of production (with :port where needed)")
set(ZRCORE_CONFIGURATION_INTEGRATION_HOST "configuration-integration.zrcore.example.invalid"
    CACHE STRING "Configuration host of integration")
set(ZRCORE_ERROR_DOMAIN_PREFIX "invalid.example.zrcore"
    CACHE STRING "Reverse host name that the framework's error domain begins with")
set(ZRCORE_TILE_CONFIG "${PROJECT_SOURCE_DIR}/services/tile_config.json"
    CACHE FILEPATH "The configuration packaged with the framework, for when the hosts cannot be reached")

if(NOT ZRCORE_CONFIGURATION_SCHEME MATCHES "^https?$")
  message(FATAL_ERROR "ZRCORE_CONFIGURATION_SCHEME is \"${ZRCORE_CONFIGURATION_SCHEME}\": set http or https")
endif()
foreach(host IN ITEMS PRODUCTION INTEGRATION)
  if(NOT ZRCORE_CONFIGURATION_${host}_HOST MATCHES "^[A-Za-z0-9.-]+(:[0-9]+)?$")
    message(FATAL_ERROR "ZRCORE_CONFIGURATION_${host}_HOST is \"${ZRCORE_CONFIGURATION_${host}_HOST}\": set a host name")
  endif()
endforeach()
if(NOT EXISTS "${ZRCORE_TILE_CONFIG}")
  message(FATAL_ERROR "ZRCORE_TILE_CONFIG: there is no file \"${ZRCORE_TILE_CONFIG}\"")
endif()
