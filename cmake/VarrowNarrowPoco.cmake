# On Windows, Poco asks its users for wide characters, with which the headers of log4cplus need its wide
# build. Used by this tree and by installed packages.
if(WIN32)
  get_target_property(varrow_poco Poco::Foundation INTERFACE_COMPILE_DEFINITIONS)
  if(varrow_poco)
    list(REMOVE_ITEM varrow_poco UNICODE _UNICODE)
    set_target_properties(Poco::Foundation PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${varrow_poco}")
  endif()
  unset(varrow_poco)
endif()
