# Called by CPack with the installed files: makes the zip and its SHA-256. The same files give the same bytes, on any
# machine and for any user: the names are sorted, every time is SOURCE_DATE_EPOCH, no owner and no folder is stored.
find_program(ZIP zip REQUIRED)

set(carpeta ${CPACK_TEMPORARY_DIRECTORY})
set(archivo ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip)
set(momento $ENV{SOURCE_DATE_EPOCH})
if(momento STREQUAL "")
  string(TIMESTAMP momento %s UTC)
endif()

# The bill of materials, with the sums of the files that are shipped.
file(READ ${CPACK_LUMODIR_SBOM} texto)
foreach(algoritmo SHA1 SHA256)
  foreach(fichero bin/lumodir.dll bin/lumodir.exe)
    file(${algoritmo} ${carpeta}/${fichero} suma)
    string(REPLACE "<<${algoritmo} ${fichero}>>" "${suma}" texto "${texto}")
  endforeach()
endforeach()
execute_process(COMMAND date -u -d @${momento} +%Y-%m-%dT%H:%M:%SZ OUTPUT_VARIABLE fecha OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "<<CREATED>>" "${fecha}" texto "${texto}")
file(WRITE ${carpeta}/sbom.spdx.json "${texto}")
# As the installed files are, whatever the user's umask.
file(CHMOD ${carpeta}/sbom.spdx.json PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# Everything in one folder, so that unpacking scatters nothing.
file(GLOB_RECURSE ficheros RELATIVE ${carpeta} ${carpeta}/*)
file(REMOVE_RECURSE ${carpeta}.zip)
foreach(fichero IN LISTS ficheros)
  get_filename_component(destino ${carpeta}.zip/${CPACK_PACKAGE_FILE_NAME}/${fichero} DIRECTORY)
  file(COPY ${carpeta}/${fichero} DESTINATION ${destino})
endforeach()
list(TRANSFORM ficheros PREPEND ${CPACK_PACKAGE_FILE_NAME}/)
list(SORT ficheros)
list(JOIN ficheros "\n" lineas)
file(WRITE ${carpeta}.txt "${lineas}\n")

file(REMOVE ${archivo})
execute_process(COMMAND touch -d @${momento} ${ficheros} WORKING_DIRECTORY ${carpeta}.zip COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=UTC ${ZIP} -q -9 -X ${archivo} -@
                INPUT_FILE ${carpeta}.txt WORKING_DIRECTORY ${carpeta}.zip COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${carpeta}.zip ${carpeta}.txt)

file(SHA256 ${archivo} suma)
file(WRITE ${archivo}.sha256 "${suma}  ${CPACK_PACKAGE_FILE_NAME}.zip\n")
set(CPACK_EXTERNAL_BUILT_PACKAGES ${archivo} ${archivo}.sha256)
