#!/usr/bin/env bash
# Compares the dynamic symbols liborvane.so defines with the ones a host may use, so that nothing
# the host must not bind to leaks out (std or tinyxml2 instantiations) and nothing it needs is
# missing. Usage: exported_symbols.sh <nm> <liborvane.so>
set -euo pipefail
nm_tool=$1
library=$2

expected() {
  # Entries with C names
  printf '%s\n' \
    nuevoIfcProyectPSet cargaIfcProyectPSet nuevoPSet nuevaPropiedadDoble nuevaPropiedadStr \
    getPset getNombrePropiedad getUnidadPropiedad getValorPropiedadDoble getValorPropiedadStr \
    getValorPropiedadStr2 guardaIfcProyectPset liberaIfcProyectPset \
    getPropiedadesFichero setPropiedadesFichero getCuantificadoresFichero setCuantificadoresFichero \
    PropertiesSet asignarPropiedades QuantitiesSet asignarCuantificadores fijaRutaMensajes \
    exportaIds exportaPlantillasIfc
  # Entries with C++ names: nuevaPropiedadEntera(void*, char const*, int),
  # getEnumerados(char*, char*, char**, int), and the editors' test entries without arguments
  printf '%s\n' _Z20nuevaPropiedadEnteraPvPKci _Z13getEnumeradosPcS_PS_i \
    _Z15tiposEnumeradosv _Z6pruebav _Z10pruebaQSetv _Z16pruebaAsignaQSetv
  # Every exported class: its destructors, vtable, typeinfo and typeinfo name
  for class in 8CIfcEnum 12CIfcNodoEnum 15CIfcPropertySet 16CIfcPropertyName \
               33CIfcRelationProyectPSet_IfcObject 15CIfcProyectPSet \
               16CIfcQuantityName 15CIfcQuantitySet 8CIfcType 10CIfcObject 15CIfcProyectQSet; do
    printf '%s\n' "_ZN${class}D0Ev" "_ZN${class}D1Ev" "_ZN${class}D2Ev" \
                  "_ZTV${class}" "_ZTI${class}" "_ZTS${class}"
  done
  # The two documents: constructors (default, copy, move), assignments, lee, graba, edita
  for class in 15CIfcProyectPSet 15CIfcProyectQSet; do
    printf '%s\n' "_ZN${class}C1Ev" "_ZN${class}C2Ev" "_ZN${class}C1ERKS_" "_ZN${class}C2ERKS_" \
                  "_ZN${class}C1EOS_" "_ZN${class}C2EOS_" "_ZN${class}aSERKS_" "_ZN${class}aSEOS_" \
                  "_ZN${class}3leeEPKc" "_ZN${class}5grabaEPKc" "_ZN${class}5editaEv"
  done
}

actual=$("$nm_tool" -D --defined-only --format=posix "$library" | awk '{print $1}' | LC_ALL=C sort -u)
wanted=$(expected | LC_ALL=C sort -u)

if [[ "$actual" != "$wanted" ]]; then
  echo "exported symbols differ from the host interface (< missing, > unexpected):"
  diff <(echo "$wanted") <(echo "$actual") | grep '^[<>]' || true
  exit 1
fi
echo "$(echo "$actual" | wc -l) symbols, as expected"
