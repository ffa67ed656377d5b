' All operations from a script: with variables, with literals and expressions, with optional arguments left out.
Option Explicit
Const TableLocked = 1234

Class Pantalla ' every role of a host in one
    Public Text
    Public consulta
    Public Property Get sClassName
        sClassName = "articulos"
    End Property
    Public Property Get Recordset
        consulta = "campos"
        Err.Raise TableLocked
    End Property
    Public Property Get Count
        consulta = "lista"
        Err.Raise TableLocked
    End Property
    Public Sub Requery(nombre)
        consulta = nombre
        Err.Raise TableLocked
    End Sub
End Class

Class SinNombre
End Class

Dim fallos : fallos = 0
Sub Espera(nombre, numero, texto)
    If Err.Number <> numero Or InStr(Err.Description, texto) = 0 Then
        fallos = fallos + 1
        WScript.Echo nombre & ": " & Err.Number & " " & Err.Description & " en vez de " & numero & " " & texto
    End If
    Err.Clear
End Sub

Dim obj, p, columna, indice, buscar, existencias, modal, texto, clase, auto, ventana, fecha, modo
Set obj = CreateObject("Tamvelo.ClsShowSerch")
Set p = New Pantalla
p.Text = "A-1"
columna = 0 : indice = 0 : buscar = True : existencias = False : modal = 1 : texto = "A" : clase = "articulos"
auto = True : ventana = 0 : fecha = Now : modo = 0
On Error Resume Next

Sub Panel(nombre, consulta)
    Espera nombre, TableLocked, ""
    If p.consulta <> consulta Then
        fallos = fallos + 1
        WScript.Echo nombre & ": " & p.consulta & " en vez de " & consulta
    End If
    p.consulta = ""
End Sub

obj.ShowBuscar p, p, p : Panel "ShowBuscar", "lista"
obj.ShowColums p, p : Espera "ShowColums", TableLocked, ""
obj.ShowSelec p, p, p : Panel "ShowSelec", "seleccion"
obj.ShowSelec p, p, p, columna, indice, buscar, existencias : Panel "ShowSelec con variables", "seleccion"
obj.ShowSelec p, p, p, 1, 2, False, True : Panel "ShowSelec con existencias", "seleccion_stock"
obj.ShowSelec p, p, p, , , , True : Panel "ShowSelec con huecos", "seleccion_stock"
obj.ShowSelec p, p, p, (columna), 1 + 1, Not buscar, "False" : Panel "ShowSelec con expresiones", "seleccion"
obj.ShowSelecNoVerif p, p, p, columna, 0, True, True : Panel "ShowSelecNoVerif", "seleccion"
obj.ShowSelecVerif p, p, p : Panel "ShowSelecVerif", "seleccionar"
obj.ShowSelecVerif p, p, p, 0, 0, True, True : Panel "ShowSelecVerif con existencias", "seleccion_stock"
obj.ShowSelecControlVerif p, p, p, columna : Panel "ShowSelecControlVerif", "seleccionar"
obj.ShowSelecTrueFalse p, p, p, columna, indice, buscar : Panel "ShowSelecTrueFalse", "seleccion"
obj.ShowSelecAdd p, p, p, columna, indice, buscar : Panel "ShowSelecAdd", "seleccion"
obj.ShowRegistros p, p, p, columna, indice, buscar : Panel "ShowRegistros", "seleccion"
obj.ShowSelecDirecta p, p, p : Panel "ShowSelecDirecta", "seleccion"
obj.ShowSelecDirecta p, p, p, columna, indice, buscar, modal : Panel "ShowSelecDirecta con variables", "seleccion"
obj.ShowSelecInDirecta p, p, p : Panel "ShowSelecInDirecta", "seleccion"
obj.ShowSelecInDirecta p, p, p, columna, texto, buscar, modal : Panel "ShowSelecInDirecta con variables", "seleccion"
obj.ShowSelecInDirecta p, p, p, , "B", , 1 : Panel "ShowSelecInDirecta con huecos", "seleccion"
obj.ShowOrder modo, p, p : Espera "ShowOrder", TableLocked, ""
obj.ShowRpt clase, p, p : Panel "ShowRpt", "lista"
obj.ShowSql clase, p, p : Panel "ShowSql", "lista"
obj.ShowEtiq clase, p, p : Panel "ShowEtiq", "lista"
obj.PrintEtiq clase, p, p : Panel "PrintEtiq", "lista"
obj.ShowRptCond clase, p, p : Panel "ShowRptCond", "lista"
obj.ShowRptMailCond clase, p, p : Panel "ShowRptMailCond", "lista"
obj.ShowRptBorrador clase, p, p : Panel "ShowRptBorrador", "lista"
obj.ShowRptListas clase, p, p : Panel "ShowRptListas", "lista"
obj.ShowRptInfCond clase, p, p : Panel "ShowRptInfCond", "lista"
obj.ShowRptCondHr clase, p, p : Panel "ShowRptCondHr", "lista"
obj.ShowRptFchAuto clase, p, p : Panel "ShowRptFchAuto", "lista"
obj.ShowRptFchAutoInf clase, p, p, auto : Panel "ShowRptFchAutoInf", "lista"
obj.ShowRptInfOrdenes clase, p, p, False : Panel "ShowRptInfOrdenes", "lista"
obj.ShowRptFchCliDirec clase, p, p : Panel "ShowRptFchCliDirec", "lista"
obj.ShowRptsInfFch clase, p, p : Panel "ShowRptsInfFch", "lista"
obj.ShowRptNumAut "articulos", p, p, auto : Panel "ShowRptNumAut", "lista"
obj.PrintRptNumAut clase & "x", p, p : Panel "PrintRptNumAut", "lista"
obj.ShowSeleccionar p, p : Panel "ShowSeleccionar", "campos"
obj.ShowSelecLab p, p : Panel "ShowSelecLab", "campos"
obj.ShowNuevaCita p, New SinNombre, ventana, fecha
If Err.Number <> 438 Then Espera "ShowNuevaCita", &H80020006, "sClassName" ' not every interpreter translates it
Err.Clear
obj.ShowSelecMinim p, p : Panel "ShowSelecMinim", "campos"
obj.ShowSeleccionarComp p, p : Panel "ShowSeleccionarComp", "campos"
obj.ShowSeleccionarRecibo p, p : Panel "ShowSeleccionarRecibo", "campos"

obj.ShowSelec p, p, "texto" : Espera "texto por control", 13, ""
obj.ShowSelec p, p, obj
If Err.Number <> 13 Then Espera "objeto que no es control", &H80020005, "ctl" ' not every interpreter translates it
Err.Clear
obj.ShowSelec p, p, p, "uno" : Espera "texto por columna", 13, ""
obj.ShowSelec p, p : Espera "argumentos de menos", 450, ""
obj.NoExiste : Espera "miembro que no existe", 438, ""
WScript.Echo "fin: " & fallos & " fallos"
