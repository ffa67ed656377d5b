' A host in a script. What it is asked and answered is printed with the types in which it comes; the statements that open
' dialogs are put below, each behind a call of Empieza.
Option Explicit

Sub Dice(miembro, valores)
    Dim linea, valor
    linea = miembro
    For Each valor In valores
        linea = linea & " " & Escrito(valor)
    Next
    WScript.Echo Replace(linea, Chr(241), "n~") ' whatever letters the console has
End Sub

Function Escrito(valor)
    Escrito = TypeName(valor)
    Select Case Escrito
    Case "Campo", "Pantalla", "PantallaBreve", "IDispatch", "Object"
        Escrito = "[" & valor.Text & "]"
    Case "Boolean"
        Escrito = "False"
        If valor Then Escrito = "True"
    Case "Integer"
        Escrito = valor
    Case "String"
        Escrito = "'" & valor & "'"
    Case "Date"
        If valor < 1 Then
            Escrito = Hour(valor) & ":" & Minute(valor)
        ElseIf valor = DateSerial(Year(Date), Month(Date), 1) Then
            Escrito = "mes"
        ElseIf valor = DateSerial(Year(Date), Month(Date) + 1, 1) - 1 Then
            Escrito = "fin"
        End If
    Case Else
        Escrito = Escrito & ":" & valor
    End Select
End Function

Function Marcas(lista)
    Dim marca
    Marcas = "("
    For Each marca In lista
        Marcas = Marcas & CInt(marca)
    Next
    Marcas = Marcas & ")"
End Function

Class Campo ' of the record set: its value is that of the current record
    Public Name
    Public Numero
    Public Property Get Value : Value = registros.Lee(Numero) : End Property
    Public Property Let Value(nuevo) : registros.Escribe Numero, nuevo : End Property
End Class

Class Campos
    Public Property Get Count : Count = 5 : End Property
    Public Function Item(numero)
        Dim nombres
        nombres = Split("codigo nombre familia precio Planificar")
        Set Item = New Campo
        Item.Name = nombres(numero)
        Item.Numero = numero
    End Function
End Class

Class Registros
    Public Filas
    Public Visibles ' their places, those of the filter
    Public AbsolutePosition
    Public Property Get RecordCount : RecordCount = UBound(Split(Visibles)) + 1 : End Property
    Public Property Get BOF : BOF = AbsolutePosition < 1 : End Property
    Public Property Get EOF : EOF = AbsolutePosition > RecordCount : End Property
    Public Property Get Fields : Set Fields = New Campos : End Property
    Public Sub MoveFirst : AbsolutePosition = 1 : End Sub
    Public Sub MoveLast : AbsolutePosition = RecordCount : End Sub
    Public Sub MoveNext : AbsolutePosition = AbsolutePosition + 1 : End Sub
    Public Sub MovePrevious : AbsolutePosition = AbsolutePosition - 1 : End Sub
    Public Sub Update : Dice "Update", Array() : End Sub
    Private Function Lugar
        Dim lugares
        lugares = Split(Visibles)
        Lugar = CInt(lugares(AbsolutePosition - 1))
    End Function
    Public Function Lee(numero) : Lee = Filas(Lugar)(numero) : End Function
    Public Sub Escribe(numero, nuevo)
        Dim fila
        Dice "Value de " & Lee(0), Array(nuevo)
        If Lee(0) = "C-3" Then Err.Raise 1234, "Gestion", "La ficha esta cerrada."
        fila = Filas(Lugar)
        fila(numero) = nuevo
        Filas(Lugar) = fila
    End Sub
    Public Sub Filtra(texto)
        Dim i, fila
        Visibles = ""
        For i = 0 To UBound(Filas)
            fila = Filas(i)
            If InStr(fila(0), texto) > 0 Or InStr(texto, "=") > 0 Then Visibles = Trim(Visibles & " " & i)
        Next
        AbsolutePosition = 1
    End Sub
End Class

Dim registros, filtro

Class Clase ' of a list
    Public Property Get sClassName : sClassName = "fichas" : End Property
    Public Property Get Recordset : Set Recordset = registros : End Property
    Public Property Get existenregistros : existenregistros = registros.RecordCount > 0 : End Property
    Public Sub Requery(consulta) : Dice "Requery", Array(consulta) : registros.Filtra filtro : End Sub
    Public Sub FindRecord(texto) : Dice "FindRecord", Array(texto) : registros.MoveNext : End Sub
    Public Function CreateFilter(caja) : CreateFilter = Replace(caja.Text, "*", "") : Dice "CreateFilter " & caja.Name & caja.Index & caja.DataField, Array(caja) : End Function
    Public Sub SetFilter(texto, hueco) : filtro = texto : Dice "SetFilter", Array(texto, hueco) : End Sub
    Public Function GetFilter(hueco) : GetFilter = filtro : End Function
    Public Sub AplyFilter(texto) : Dice "AplyFilter", Array(texto) : filtro = texto : End Sub
    Public Function GetConnection : GetConnection = "conexion" : End Function
    Public Sub Denegar_todos(conexion) : Dice "Denegar_todos", Array(conexion) : End Sub
    Public Function NuevoCodigo_Fam(familia) : NuevoCodigo_Fam = familia & "-001" : End Function
    Public Sub InsertarArticulo(valores) : Dice "InsertarArticulo", valores : End Sub
End Class

Class ClaseDeBusqueda ' whose boxes and columns have numbers; names have no digits
    Public Property Get sClassName : sClassName = "fichas" : End Property
    Public Property Get Recordset : Set Recordset = registros : End Property
    Public Sub Requery(consulta) : Dice "Requery", Array(consulta) : End Sub
    Public Sub FindRecord(texto, columna) : Dice "FindRecord", Array(texto, columna) : registros.MoveNext : End Sub
    Public Function ValidaKey(caja, tecla) : ValidaKey = Not IsNumeric(Chr(tecla)) : End Function
    Public Function ValidaDefinedSize(caja) : ValidaDefinedSize = 10 : End Function
    Public Function ValidaValue(caja) : ValidaValue = True : Dice "ValidaValue " & caja.Name & caja.Index, Array(caja) : End Function
    Public Function CreateFilter(control, indice)
        Dim i
        If control.Name = "List2" Then
            For i = 0 To control.ListCount - 1
                CreateFilter = CreateFilter & "," & control.List(i)
            Next
        ElseIf control.Text <> "" Then
            CreateFilter = control.DataField & "=" & control.Text
        End If
        Dice "CreateFilter " & control.Name & control.Index & control.DataField, Array(indice)
    End Function
    Public Sub SetFilter(texto, hueco) : filtro = texto : Dice "SetFilter", Array(texto, hueco) : End Sub
    Public Function GetFilter(hueco) : GetFilter = filtro : End Function
    Public Sub AplyFilter(texto) : Dice "AplyFilter", Array(texto) : End Sub
    Public Sub AceptarBuscar : Dice "AceptarBuscar", Array() : End Sub
End Class

Class Cosa ' a column, or a report
    Public Caption
    Public DataField
    Public Visible
    Public Titulo
End Class

Class Lista
    Public Todas
    Public Primera
    Public Property Get Count : Count = UBound(Todas) + 1 : End Property
    Public Property Get Col : Col = 1 : End Property
    Public Function Item(numero) : Set Item = Todas(numero - Primera) : End Function
End Class

Class Pantalla ' the control and the sink, with as many parameters as the dialogs pass
    Public Text
    Public Sub AceptarSeleccion(i, ctl, valor)
        Dice "AceptarSeleccion", Array(i, ctl, valor)
        If TypeName(valor) = "String" Then Text = valor
    End Sub
    Public Sub AceptarSeleccionParam(i, ctl, a, b, c) : Dice "AceptarSeleccionParam", Array(i, ctl, a, b, c) : Text = b : End Sub
    Public Sub clsEvents_AceptaSeleccion(i, ctl, a, b, c) : Dice "clsEvents_AceptaSeleccion", Array(i, ctl, a, b, c) : End Sub
    Public Sub AceptarEliminar(i, ctl)
        Dice "AceptarEliminar de " & registros.Lee(0), Array(i, ctl)
        registros.Visibles = "0 2"
    End Sub
    Public Sub AceptarBuscar : Dice "AceptarBuscar", Array() : End Sub
    Public Sub AceptarFechaEntre(a, b) : Dice "AceptarFechaEntre", Array(TypeName(a), CDbl(a) - CDbl(DateSerial(Year(Date), 1, 1)), TypeName(b), CDbl(b) - CDbl(DateSerial(Year(Date), 12, 31))) : End Sub
    Public Sub ActualizaOrden(columna, modo) : Dice "ActualizaOrden", Array(columna, modo) : End Sub
    Public Sub ActualizaColumnas(cuadro)
        Dim i
        For i = 0 To cuadro.Count - 1
            Dice cuadro.Item(i).Caption, Array(cuadro.Item(i).Visible)
        Next
    End Sub
    Public Sub AceptarReports(r, s, c) : Dice "AceptarReports" & Marcas(r), Array(s, c) : End Sub
    Public Sub AceptarReportsParam(r, s, c, d, h, t, f, p, e, l) : Dice "AceptarReportsParam" & Marcas(r), Array(s, c, d, h, t, f, p, e, l) : End Sub
    Public Sub AceptarReportsParamMail(r, s, c, d, h, t, f, p, e, l) : Dice "AceptarReportsParamMail" & Marcas(r), Array(s, c, d, h, t, f, p, e, l) : End Sub
    Public Sub AceptarReportsInformesParam(r, s, c, d, h, t, f, p, e) : Dice "AceptarReportsInformesParam" & Marcas(r), Array(s, c, d, h, t, f, p, e) : End Sub
    Public Sub AceptarReportsParamHr(r, s, c, d, h, t, f, p, dh, hh) : Dice "AceptarReportsParamHr" & Marcas(r), Array(s, c, d, h, t, f, p, dh, hh) : End Sub
    Public Sub AceptarReportsFchAuto(r, s, c, d, h, a) : Dice "AceptarReportsFchAuto" & Marcas(r), Array(s, c, d, h, a) : End Sub
    Public Sub AceptarInformesFchAuto(r, s, c, d, h, a) : Dice "AceptarInformesFchAuto" & Marcas(r), Array(s, c, d, h, a) : End Sub
    Public Sub AceptarInformesFch(r, s, c, d, h, e) : Dice "AceptarInformesFch" & Marcas(r), Array(s, c, d, h, e) : End Sub
    Public Sub AceptarInformesFchAutoTipoTime(r, s, c, d, h, a, t, dh, hh, p, f, k) : Dice "AceptarInformesFchAutoTipoTime" & Marcas(r), Array(s, c, d, h, a, t, dh, hh, p, f, k) : End Sub
    Public Sub AceptarDocNumAut(r, s, c, d, h, a) : Dice "AceptarDocNumAut" & Marcas(r), Array(s, c, d, h, a) : End Sub
    Public Sub AceptarListasParam(r, s, c, l) : Dice "AceptarListasParam" & Marcas(r), Array(s, c, l) : End Sub
    Public Sub AceptarEtiqueta(r) : Dice "AceptarEtiqueta" & Marcas(r), Array() : End Sub
End Class

Class PantallaBreve
    Public Sub AceptarInformesFchAuto(r, s, c, d, h) : Dice "AceptarInformesFchAuto" & Marcas(r), Array(s, c, d, h) : End Sub
End Class

Dim dialogos, p, lista, busca, cuadro, informes, columna, indice, hallar, existencias, modal, texto, modo, clave, ventana, fecha

Sub Empieza(numero)
    Dim i, nombres
    If Err.Number = &H80020005 Then
        WScript.Echo "Error 13" ' not every interpreter translates it
    ElseIf Err.Number <> 0 Then
        WScript.Echo "Error " & Err.Number
    End If
    If p.Text <> "C-2" Then Dice "Queda", Array(p)
    If numero > 0 And columna & indice & modal & texto & modo <> "001A7" Then WScript.Echo "Variables cambiadas"
    Err.Clear
    WScript.Echo "== " & numero
    Set registros = New Registros
    registros.Filas = Array(Array("C-1", "Iba" & Chr(241) & "ez", 1, 12.5, False), Array("C-2", "Pe" & Chr(241) & "a", 2, 0.5, True), Array("C-3", "Mu" & Chr(241) & "oz", 3, 7, False))
    filtro = ""
    registros.Filtra filtro
    Set p = New Pantalla
    p.Text = "C-2"
    Set lista = New Clase
    Set busca = New ClaseDeBusqueda
    Set cuadro = New Lista
    cuadro.Todas = Array(New Cosa, New Cosa, New Cosa)
    nombres = Split("Codigo Nombre Saldo")
    For i = 0 To 2
        cuadro.Todas(i).Caption = nombres(i)
        cuadro.Todas(i).DataField = LCase(nombres(i))
        cuadro.Todas(i).Visible = i < 2
    Next
    Set informes = New Lista
    informes.Todas = Array(New Cosa, New Cosa)
    informes.Primera = 1
    informes.Todas(0).Titulo = "Listado"
    columna = 0 : indice = 0 : hallar = True : existencias = False : modal = 1 : texto = "A" : modo = 7
    clave = "Pruebas" : ventana = 0 : fecha = DateSerial(2026, 11, 21)
End Sub

Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
Set p = New Pantalla
p.Text = "C-2"
On Error Resume Next
