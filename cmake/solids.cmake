# What regions are computed by: Clipper for polygons; of Open CASCADE the libraries are found one by one,
# since the package file of the distribution asks for more than is linked here.
find_path(OCCT_INCLUDE Standard.hxx PATH_SUFFIXES opencascade occt REQUIRED)
foreach(name TKernel TKMath TKG3d TKGeomBase TKBRep TKTopAlgo TKBO TKShHealing)
  find_library(OCCT_${name} ${name} REQUIRED)
  list(APPEND CORVANE_OCCT ${OCCT_${name}})
endforeach()
find_path(CLIPPER_INCLUDE polyclipping/clipper.hpp REQUIRED)
find_library(CORVANE_CLIPPER polyclipping REQUIRED)
