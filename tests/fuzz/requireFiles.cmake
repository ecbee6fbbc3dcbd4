file(GLOB found ${FOLDER}/*)
if(NOT found)
  message(FATAL_ERROR "no corpus files in ${FOLDER}")
endif()
