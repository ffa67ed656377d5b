# El mismo programa en PowerShell, en un proceso de los mismos bits que la biblioteca. Las clases de PowerShell no se ven desde
# fuera; las de C# si: son las de seleccion.cs, que tiene que estar al lado.
Add-Type -Path "$PSScriptRoot\seleccion.cs" -ReferencedAssemblies Microsoft.CSharp

$pantalla = New-Object Pantalla
$articulos = New-Object Tabla
$columnas = $articulos.Fields
$dialogos = New-Object -ComObject Tamvelo.ClsShowSerch
$dialogos.ShowSelec([ref]$pantalla, [ref]$articulos, [ref]$pantalla)
Write-Output "Elegido: $($pantalla.Text)"
$dialogos.ShowBuscar([ref]$pantalla, [ref]$articulos, [ref]$columnas)
Write-Output "Filtro: $($articulos.GetFilter('Filter'))"
