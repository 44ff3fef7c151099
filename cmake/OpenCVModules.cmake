# OpenCV module by module. The package's own configuration pulls in every module (over 250 libraries);
# the program needs two small ones, and its start time depends on loading no more; `dnn` is loaded late.
find_path(OPENCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
foreach(module core imgproc dnn)
  find_library(OPENCV_${module}_LIBRARY opencv_${module} REQUIRED)
  add_library(OpenCV::${module} SHARED IMPORTED GLOBAL)
  set_target_properties(OpenCV::${module} PROPERTIES
    IMPORTED_LOCATION ${OPENCV_${module}_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${OPENCV_INCLUDE_DIR})
endforeach()
