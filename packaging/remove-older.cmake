# Run by cpack: a package of an older version that lies beside the new one would be taken for it.
file(GLOB older ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}_*.deb)
if(older)
  file(REMOVE ${older})
endif()
