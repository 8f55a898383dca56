# SPDX-License-Identifier: MIT
# The catalogues of all components, in Core's resources. script/translations takes new texts into them.

foreach(language IN ITEMS ar de fr)
  set_source_files_properties(translations/pellarvine_${language}.ts PROPERTIES
    OUTPUT_LOCATION ${PROJECT_BINARY_DIR}/translations)
  list(APPEND catalogues translations/pellarvine_${language}.ts)
endforeach()
qt6_add_translation(compiledCatalogues ${catalogues} OPTIONS -silent)
qt6_add_resources(PellarvineCore pellarvineTranslations PREFIX /pellarvine
  BASE ${PROJECT_BINARY_DIR}/translations FILES ${compiledCatalogues})
